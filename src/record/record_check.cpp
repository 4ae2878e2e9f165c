#include "record/record_check.h"

#include <algorithm>

namespace corvane::record {

namespace {

template <typename List>
int sizeOf(const List &list) {
  return static_cast<int>(list.size());
}

class IndexCheck {
 public:
  void within(const char *list, int index, int size) {
    if ((index < 0 || index >= size) && fault_.isEmpty()) {
      fault_ =
          QStringLiteral("\"%1\" names entry %2 of a list of %3").arg(list).arg(index).arg(size);
    }
  }
  void asLong(const char *list, int size, int wanted) {
    if (size != wanted && fault_.isEmpty()) {
      fault_ =
          QStringLiteral("\"%1\" has %2 entries where %3 belong").arg(list).arg(size).arg(wanted);
    }
  }
  QString fault() const { return fault_; }

 private:
  QString fault_;
};

void checkLists(const Record &record, IndexCheck &check) {
  for (const Cutter &cutter : record.cutters) {
    check.within("cutters", cutter.machine, sizeOf(record.machines));
  }
  for (const Store &store : record.stores) {
    check.within("stores", store.cutter, sizeOf(record.cutters));
  }
  for (const Order &order : record.orders) {
    check.asLong("orders", sizeOf(order.rolls), sizeOf(record.periods));
  }
  for (const SeenDemand &seen : record.seen) {
    check.asLong("seen", sizeOf(seen.rolls), sizeOf(record.periods));
  }
  for (const Pattern &pattern : record.patterns) {
    check.within("patterns", pattern.cutter, sizeOf(record.cutters));
  }
}

// The length of the record's own list of a kind; -1 where the group has the names.
int listLength(const Record &record, const QString &kind) {
  if (kind == QLatin1String("machine")) {
    return sizeOf(record.machines);
  }
  if (kind == QLatin1String("cutter")) {
    return sizeOf(record.cutters);
  }
  if (kind == QLatin1String("pattern")) {
    return sizeOf(record.patterns);
  }
  if (kind == QLatin1String("store")) {
    return sizeOf(record.stores);
  }
  return kind == QLatin1String("order") ? sizeOf(record.orders) : -1;
}

void checkNetwork(const Record &record, IndexCheck &check) {
  for (const NodeGroup &group : record.network.groups) {
    const int listed = listLength(record, group.kind);
    check.asLong("places", sizeOf(group.places), 2 * (listed < 0 ? sizeOf(group.names) : listed));
  }
  const int nodes = nodeCount(record.network);
  for (const std::vector<int> &arcs : record.network.arcs) {
    for (const int node : arcs) {
      check.within("arcs", node, nodes);
    }
  }
}

void checkPlan(const Record &record, const Plan &plan, IndexCheck &check) {
  const int periods = sizeOf(record.periods);
  for (const Reels &reels : plan.reels) {
    check.within("reels", reels.pattern, sizeOf(record.patterns));
    check.within("reels", reels.period, periods);
  }
  for (const MachineTime &time : plan.machineTime) {
    check.within("machine_time", time.machine, sizeOf(record.machines));
    check.within("machine_time", time.period, periods);
  }
  for (const Delivery &delivery : plan.deliveries) {
    check.within("deliveries", delivery.order, sizeOf(record.orders));
    check.within("deliveries", delivery.period, periods);
  }
  for (const Shipment &shipment : plan.shipments) {
    check.within("shipments", shipment.mode, sizeOf(plan.modes));
    check.within("shipments", shipment.store, sizeOf(record.stores));
    check.within("shipments", shipment.order, sizeOf(record.orders));
    check.within("shipments", shipment.leaves, periods);
    check.within("shipments", shipment.arrives, periods);
  }
  for (const std::vector<StoreRolls> *list : {&plan.surplus, &plan.stock}) {
    for (const StoreRolls &rolls : *list) {
      check.within("surplus", rolls.store, sizeOf(record.stores));
      check.within("surplus", rolls.period, periods);
    }
  }
  for (const Flow &flow : plan.flows) {
    check.within("flows", std::min(flow.from, flow.to), nodeCount(record.network));
    check.within("flows", std::max(flow.from, flow.to), nodeCount(record.network));
  }
}

}  // namespace

int nodeCount(const Network &network) {
  std::size_t places = 0;
  for (const NodeGroup &group : network.groups) {
    places += group.places.size();
  }
  return static_cast<int>(places / 2);
}

QString faultOf(const Record &record) {
  IndexCheck check;
  checkLists(record, check);
  checkNetwork(record, check);
  if (record.plan.has_value()) {
    checkPlan(record, *record.plan, check);
  }
  return check.fault();
}

}  // namespace corvane::record
