#include "export/block_nodes.h"

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/freight_arcs.h"
#include "export/names.h"
#include "export/storage_nodes.h"

namespace corvane {

namespace {

// The nodes of the orders all stand in one row; their blocks have rows of their own.
constexpr quint32 kOrderNodeRow = 0;

void writeDemandNode(ImportFile &file, const std::string &node, const std::string &coordinates,
                     const Order &order) {
  file.line("addnode <type> \"StorageDemand\" <name> ", node, coordinates,
            " <undercost> 50000 <storagemax> 0 <demandamount> ", order.quantity, " <period> ",
            quoted(order.period));
}

void writeOrderBlocks(const ModelData &data, ImportFile &file, const NameSet &orderSets) {
  quint32 row = 0;
  forEachElement(orderSets.names(), [&](const QString &name) {
    const std::string set = utf8(name);
    file.line("blockset ", set);
    writeBlockNode(file, set, data.columns.order, kOrderRowStep * row, "");
    ++row;
  });
}

}  // namespace

NameSet::NameSet(StrComp &order) : names_(&order, false) {}

bool NameSet::insert(const QString &name) {
  storage_.append(name);
  if (names_.insert(&storage_.last()) == skipList<QString>::kStored) {
    return true;
  }
  storage_.removeLast();
  return false;
}

double writeBlocks(const ModelData &data, ImportFile &file, std::ostream &log) {
  NameSet orderNodes(data.planning.comparators.name);
  NameSet orderSets(data.planning.comparators.name);
  double totalDemand = 0;
  quint32 delayRow = 0;
  forEachElement(data.planning.orders, [&](const Order &order) {
    totalDemand += order.quantity * order.width;
    if (writeOrderStorage(data, file, order, orderNodes, orderSets, kOrderNodeRow)) {
      for (const Cutter *cutter : data.planning.cuttersOf(order.grade)) {
        writeOrderFreight(data, file, *cutter, order, delayRow, log);
      }
    }
  });
  forEachElement(orderNodes.names(), [&](const QString &name) {
    const std::string node = utf8(name);
    for (const std::string &period : data.periods) {
      file.line("addnode <type> \"StorageDemand\" <name> ", node,
                " <undercost> 50000 <storagemax> 0 <period> ", period);
    }
  });
  writeOrderBlocks(data, file, orderSets);
  return totalDemand;
}

bool writeOrderStorage(const ModelData &data, ImportFile &file, const Order &order,
                       NameSet &orderNodes, NameSet &orderSets, quint32 blockRow) {
  const QString name = orderNodeName(order);
  const std::string node = utf8(name);
  if (!orderNodes.insert(name)) {
    writeDemandNode(file, node, "", order);
    return false;
  }
  writeDemandNode(file, node, coordinatesAt(data.columns.order, kOrderRowStep * blockRow), order);
  file.line("addattach <node> ", node, " <commodity> \"DemandWidth", order.width, "\" <in> True");
  const QString set = orderSetName(order);
  orderSets.insert(set);
  file.line("addnodetoset ", utf8(set), " ", node);
  return true;
}

}  // namespace corvane
