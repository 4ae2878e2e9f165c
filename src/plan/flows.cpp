#include "plan/flows.h"

namespace corvane::plan {

namespace {

// What one run of a pattern moves beside the yields that are split.
void addReels(const PlanProblem &problem, const Pattern &pattern, std::size_t period, double reels,
              std::size_t periods, std::vector<double> &flows) {
  const Cutter &cutter = problem.cutters[pattern.cutter];
  flows[cutter.timeArc * periods + period] += reels / cutter.capacity;
  for (const Index arc : pattern.deckleArcs) {
    flows[arc * periods + period] += reels;
  }
  if (pattern.wasteArc != kNone) {
    flows[pattern.wasteArc * periods + period] += reels * pattern.trim;
  }
  for (const Yield &yield : pattern.yields) {
    if (yield.arcs.size() == 1) {
      flows[yield.arcs.front() * periods + period] += reels * yield.rolls;
    }
  }
}

}  // namespace

std::vector<double> arcFlows(const Network &network, const PlanProblem &problem, const Plan &plan) {
  const std::size_t periods = problem.periodCount();
  std::vector<double> flows(network.arcs.size() * periods);
  for (std::size_t pattern = 0; pattern < problem.patterns.size(); ++pattern) {
    for (std::size_t period = 0; period < periods; ++period) {
      if (const double reels = plan.reels[pattern * periods + period]; reels > 0.0) {
        addReels(problem, problem.patterns[pattern], period, reels, periods, flows);
      }
    }
  }
  for (const auto &[key, rolls] : plan.splits) {
    const auto &[pattern, yield, store, period] = key;
    flows[problem.patterns[pattern].yields[yield].arcs[store] * periods + period] += rolls;
  }
  for (std::size_t index = 0; index < problem.routes.size(); ++index) {
    const Route &route = problem.routes[index];
    for (std::size_t period = 0; period < periods; ++period) {
      const double rolls = plan.ships[index * periods + period];
      flows[route.arc * periods + period] += rolls;
      if (route.lastArc != route.arc && route.arrival[period] != kNone) {
        flows[route.lastArc * periods + route.arrival[period]] += rolls;
      }
    }
  }
  return flows;
}

}  // namespace corvane::plan
