#pragma once

#include <concepts>
#include <type_traits>
#include <utility>

#include "record/record.h"

namespace corvane::record {

// The JSON form of every struct of the record, told once for writing and reading. `objectFields`
// names the members of an object with io("key", field); `rowFields` gives the elements of a short
// array with io.row(...), for the lists that are long.

template <typename T, typename Struct>
concept Is = std::same_as<std::remove_const_t<T>, Struct>;

template <typename Io, Is<Parameter> T>
void objectFields(Io &io, T &parameter) {
  io("key", parameter.key);
  io("value", parameter.value);
  io("origin", parameter.origin);
}

template <typename Io, Is<File> T>
void objectFields(Io &io, T &file) {
  io("role", file.role);
  io("name", file.name);
  io("there", file.isThere);
  io("bytes", file.bytes);
  io("sha256", file.sha256);
}

template <typename Io, Is<LogSection> T>
void objectFields(Io &io, T &log) {
  io("started", log.started);
  io("ended", log.ended);
  io("complete", log.isComplete);
  io("seed", log.seed);
  io("demand_inches", log.demandInches);
  io("generated_patterns", log.generatedPatterns);
  io("messages", log.messages);
}

template <typename Io, Is<Machine> T>
void objectFields(Io &io, T &machine) {
  io("name", machine.name);
  io("mill", machine.mill);
}

template <typename Io, Is<Cutter> T>
void objectFields(Io &io, T &cutter) {
  io("name", cutter.name);
  io("machine", cutter.machine);
  io("grade", cutter.grade);
  io("deckle", cutter.deckle);
  io("capacity", cutter.capacity);
  io("waste_cost", cutter.wasteCost);
}

template <typename Io, Is<Store> T>
void rowFields(Io &io, T &store) {
  io.row(store.name, store.cutter, store.width);
}

template <typename Io, Is<Order> T>
void objectFields(Io &io, T &order) {
  io("name", order.name);
  io("grade", order.grade);
  io("customer", order.customer);
  io("width", order.width);
  io("rolls", order.rolls);
}

template <typename Io, Is<SeenDemand> T>
void rowFields(Io &io, T &seen) {
  io.row(seen.grade, seen.width, seen.rolls);
}

template <typename Io, Is<std::pair<double, int>> T>
void rowFields(Io &io, T &rolls) {
  io.row(rolls.first, rolls.second);
}

template <typename Io, Is<Pattern> T>
void rowFields(Io &io, T &pattern) {
  io.row(pattern.name, pattern.cutter, pattern.trim, pattern.rolls);
}

template <typename Io, Is<NodeGroup> T>
void objectFields(Io &io, T &group) {
  io("kind", group.kind);
  io("names", group.names);
  io("places", group.places);
}

template <typename Io, Is<Network> T>
void objectFields(Io &io, T &network) {
  io("nodes", network.groups);
  io("arcs", network.arcs);
}

template <typename Io, Is<Finding> T>
void objectFields(Io &io, T &finding) {
  io("code", finding.code);
  io("severity", finding.severity);
  io("file", finding.file);
  io("line", finding.line);
  io("text", finding.text);
}

template <typename Io, Is<Reels> T>
void rowFields(Io &io, T &reels) {
  io.row(reels.pattern, reels.period, reels.reels);
}

template <typename Io, Is<MachineTime> T>
void rowFields(Io &io, T &time) {
  io.row(time.machine, time.period, time.used, time.available);
}

template <typename Io, Is<Delivery> T>
void rowFields(Io &io, T &delivery) {
  io.row(delivery.order, delivery.period, delivery.delivered, delivery.unmet, delivery.reason);
}

template <typename Io, Is<Shipment> T>
void rowFields(Io &io, T &shipment) {
  io.row(shipment.mode, shipment.store, shipment.order, shipment.leaves, shipment.arrives,
         shipment.rolls, shipment.cost);
}

template <typename Io, Is<StoreRolls> T>
void rowFields(Io &io, T &rolls) {
  io.row(rolls.store, rolls.period, rolls.rolls);
}

template <typename Io, Is<Flow> T>
void rowFields(Io &io, T &flow) {
  io.row(flow.from, flow.to, flow.inches);
}

template <typename Io, Is<PaperBound> T>
void rowFields(Io &io, T &bound) {
  io.row(bound.grade, bound.inches);
}

template <typename Io, Is<Named> T>
void rowFields(Io &io, T &named) {
  io.row(named.name, named.value);
}

template <typename Io, Is<Note> T>
void objectFields(Io &io, T &note) {
  io("kind", note.kind);
  io("line", note.line);
  io("text", note.text);
}

template <typename Io, Is<Plan> T>
void objectFields(Io &io, T &plan) {
  io("whole_reels", plan.wholeReels);
  io("cost", plan.cost);
  io("total_cost", plan.totalCost);
  io("bound_cost", plan.boundCost);
  io("warnings", plan.warnings);
  io("advice", plan.advice);
  io("paper_bounds", plan.paperBounds);
  io("modes", plan.modes);
  io("reels", plan.reels);
  io("machine_time", plan.machineTime);
  io("deliveries", plan.deliveries);
  io("shipments", plan.shipments);
  io("surplus", plan.surplus);
  io("stock", plan.stock);
  io("flows", plan.flows);
}

template <typename Io, Is<Record> T>
void objectFields(Io &io, T &record) {
  io("version", record.version);
  io("name", record.name);
  io("log", record.log);
  io("parameters", record.parameters);
  io("files", record.files);
  io("periods", record.periods);
  io("days_per_period", record.daysPerPeriod);
  io("machines", record.machines);
  io("cutters", record.cutters);
  io("stores", record.stores);
  io("orders", record.orders);
  io("seen", record.seen);
  io("patterns", record.patterns);
  io("network", record.network);
  io("inputs_checked", record.wereInputsChecked);
  io("findings", record.findings);
  io("findings_left_out", record.findingsLeftOut);
  io("plan", record.plan);
}

}  // namespace corvane::record
