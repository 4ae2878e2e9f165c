#include "export/block_nodes.h"

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/freight_arcs.h"
#include "export/names.h"
#include "export/storage_nodes.h"

namespace corvane {

namespace {

constexpr int kColumn = 910;
constexpr quint32 kRowStep = 20;

int columnOf(const ModelData &data) {
  return kColumn + data.batchShift() + data.delayShift();
}

void writeDemandNode(ImportFile &file, const std::string &node, const std::string &coordinates,
                     const Order &order) {
  file.line("addnode <type> \"StorageDemand\" <name> ", node, coordinates,
            " <undercost> 50000 <storagemax> 0 <demandamount> ", order.quantity, " <period> ",
            quoted(order.period));
}

void writeOrderBlocks(ModelData &data, ImportFile &file, const NameSet &orderSets) {
  data.rows.block = 0;
  forEachElement(orderSets.names(), [&](const QString &name) {
    const std::string set = utf8(name);
    file.line("blockset ", set);
    writeBlockNode(file, set, columnOf(data), kRowStep * data.rows.block, "");
    ++data.rows.block;
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

void writeBlocks(ModelData &data, ImportFile &file, std::ostream &log) {
  NameSet orderNodes(data.planning.comparators.name);
  NameSet orderSets(data.planning.comparators.name);
  forEachElement(data.planning.orders, [&](const Order &order) {
    if (writeOrderStorage(data, file, order, orderNodes, orderSets, data.rows.block)) {
      for (const Cutter *cutter : data.cuttersOf(order.grade)) {
        writeOrderFreight(data, file, *cutter, order, log);
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
}

bool writeOrderStorage(ModelData &data, ImportFile &file, const Order &order, NameSet &orderNodes,
                       NameSet &orderSets, quint32 blockRow) {
  data.totalDemand += order.quantity * order.width;
  const QString name = orderNodeName(order);
  const std::string node = utf8(name);
  if (!orderNodes.insert(name)) {
    writeDemandNode(file, node, "", order);
    return false;
  }
  writeDemandNode(
      file, node,
      " <x> " + std::to_string(columnOf(data)) + " <y> " + std::to_string(kRowStep * blockRow),
      order);
  file.line("addattach <node> ", node, " <commodity> \"DemandWidth", order.width, "\" <in> True");
  const QString set = orderSetName(order);
  orderSets.insert(set);
  file.line("addnodetoset ", utf8(set), " ", node);
  return true;
}

}  // namespace corvane
