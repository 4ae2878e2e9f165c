#include "plan/totals.h"

namespace corvane::plan {

namespace {

class Summing {
 public:
  Summing(const Network &network, const PlanProblem &problem, const Plan &plan)
      : network_(network), problem_(problem), plan_(plan), periods_(problem.periodCount()) {}

  Totals sum() {
    addReels();
    addShips();
    addStores();
    addOrders();
    return totals_;
  }

 private:
  void addReels() {
    for (std::size_t index = 0; index < problem_.patterns.size(); ++index) {
      for (std::size_t period = 0; period < periods_; ++period) {
        if (const double reels = plan_.reels[index * periods_ + period]; reels > 0.0) {
          addReels(problem_.patterns[index], period, reels);
        }
      }
    }
  }

  void addReels(const Pattern &pattern, std::size_t period, double reels) {
    const Cutter &cutter = problem_.cutters[pattern.cutter];
    totals_.reels += reels;
    totals_.deckleInches += reels * cutter.deckleWidth;
    totals_.trimInches += reels * pattern.trim;
    for (const Index arc : pattern.deckleArcs) {
      totals_.cost.feed += reels * network_.arcCost(arc, period);
    }
    if (pattern.wasteArc != kNone) {
      totals_.cost.waste += reels * pattern.trim * network_.arcCost(pattern.wasteArc, period);
    }
    totals_.cost.machineTime += reels / cutter.capacity *
                                (network_.arcCost(cutter.timeArc, period) +
                                 problem_.machines[cutter.machine].dayCost[period]);
  }

  void addShips() {
    for (std::size_t route = 0; route < problem_.routes.size(); ++route) {
      for (std::size_t period = 0; period < periods_; ++period) {
        const double rolls = plan_.ships[route * periods_ + period];
        totals_.cost.freight += rolls * problem_.routes[route].cost[period];
        totals_.deliveredRolls += rolls;
        totals_.deliveredInches += rolls * problem_.orders[problem_.routes[route].order].width;
      }
    }
  }

  void addStores() {
    for (std::size_t index = 0; index < problem_.stores.size(); ++index) {
      for (std::size_t period = 0; period < periods_; ++period) {
        const double rolls = plan_.surplus[index * periods_ + period];
        totals_.surplusRolls += rolls;
        totals_.surplusInches += rolls * problem_.stores[index].width;
        totals_.cost.surplus += rolls * problem_.stores[index].surplusCost[period];
      }
    }
  }

  void addOrders() {
    for (std::size_t index = 0; index < problem_.orders.size(); ++index) {
      const Order &order = problem_.orders[index];
      for (std::size_t period = 0; period < periods_; ++period) {
        const double unmet = plan_.unmet[index * periods_ + period];
        totals_.orderedRolls += order.demand[period];
        totals_.orderedInches += order.demand[period] * order.width;
        totals_.unmetRolls += unmet;
        totals_.unmetInches += unmet * order.width;
        totals_.unmetOutOfReach += order.reach[period] == Reason::kMet ? 0.0 : unmet;
        totals_.shortageCost += unmet * order.undercost[period];
      }
    }
  }

  const Network &network_;
  const PlanProblem &problem_;
  const Plan &plan_;
  std::size_t periods_;
  Totals totals_;
};

}  // namespace

double Totals::trimPercent() const {
  return deckleInches > 0.0 ? 100.0 * (trimInches + surplusInches) / deckleInches : 0.0;
}

Totals sumUp(const Network &network, const PlanProblem &problem, const Plan &plan) {
  return Summing(network, problem, plan).sum();
}

}  // namespace corvane::plan
