#include "export/freight_arcs.h"

#include <ostream>

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/names.h"

namespace corvane {

namespace {

constexpr double kPoundsPerRate = 2000.0;

FreightRate rateKey(const Order &order, const Cutter &cutter, const QString &mode) {
  FreightRate key;
  key.customer = order.customerName;
  key.mill = cutter.location;
  key.mode = mode;
  return key;
}

// The names that all lines of one cutter and order share.
struct Shipment {
  std::string width;  // the commodity, quoted
  std::string store;
  std::string orderNode;
};

void writeArc(ImportFile &file, const std::string &width, const std::string &from,
              const std::string &to, const std::string &period, double cost) {
  file.line("addarc <commodity> ", width, " <from> ", from, " <to> ", to,
            " <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> ", period,
            " <cost> ", cost);
}

void writeDelayNode(const ModelData &data, ImportFile &file, const Shipment &shipment,
                    const std::string &delay, const FreightRate &rate, double cost, quint32 row) {
  std::string coordinates = coordinatesAt(data.columns.delay, kDelayRowStep * row);
  for (const std::string &period : data.periods) {
    file.line("addnode <type> \"Delay\" <name> ", delay, coordinates, " <periodstodelay> ",
              rate.delay, " <period> ", period);
    file.line("addattach <node> ", delay, " <commodity> ", shipment.width, " <in> True");
    file.line("addattach <node> ", delay, " <commodity> ", shipment.width, " <in> False");
    writeArc(file, shipment.width, shipment.store, delay, period, cost);
    writeArc(file, shipment.width, delay, shipment.orderNode, period, 0);
    coordinates.clear();
  }
}

}  // namespace

void writeOrderFreight(const ModelData &data, ImportFile &file, const Cutter &cutter,
                       const Order &order, quint32 &delayRow, std::ostream &log) {
  if (!data.planning.isPlanned(order.grade) || cutter.grade != order.grade) {
    return;
  }
  SkipListGroupCursor<FreightRate> rates(data.planning.freightRates,
                                         data.planning.comparators.freightRateCustMill);
  FreightRate *first = nullptr;
  if (rates.findGroup(rateKey(order, cutter, QString()), first) != 0) {
    log << "No freight rates for: " << utf8(order.customerName) << " - " << utf8(cutter.location)
        << "." << std::endl;
    return;
  }
  const Shipment shipment{"\"DemandWidth" + general(order.width) + "\"",
                          utf8(cutterValueName(cutter, order.width)), utf8(orderNodeName(order))};
  if (!data.settings.delay) {
    const double cost = freightCost(data, cutter, order, first->mode);
    for (const std::string &period : data.periods) {
      writeArc(file, shipment.width, shipment.store, shipment.orderNode, period, cost);
    }
    return;
  }
  while (const FreightRate *rate = rates.next()) {
    writeDelayNode(data, file, shipment, utf8(delayNodeName(*rate, order)), *rate,
                   freightCost(data, cutter, order, rate->mode), delayRow);
  }
  ++delayRow;
}

double freightCost(const ModelData &data, const Cutter &cutter, const Order &order,
                   const QString &mode) {
  FreightRate *rate = nullptr;
  const FreightRate key = rateKey(order, cutter, mode);
  if (data.planning.freightRates.search(key, rate) != skipList<FreightRate>::kFound) {
    return 0;
  }
  return rate->rate / kPoundsPerRate * cutter.lbsPerInch * order.width;
}

}  // namespace corvane
