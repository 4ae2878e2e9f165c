#include "plan/reel_search.h"

#include <algorithm>
#include <numeric>

namespace corvane::plan {

namespace {

double reelCost(const PlanProblem &problem, const ColumnRole &role, double cost) {
  for (const Yield &yield : problem.patterns[role.what].yields) {
    for (const Index store : yield.stores) {
      cost += yield.rolls * std::max(0.0, problem.stores[store].surplusCost[role.period]);
    }
  }
  return cost;
}

// What a roll could cost at most, as far as the columns tell: a reel all of whose rolls are
// surplus, and the dearest freight.
double dearestRoll(const PlanProblem &problem, const CompactLp &lp) {
  double reel = 0;
  double ship = 0;
  for (int column = 0; column < lp.model().columns(); ++column) {
    const ColumnRole &role = lp.column(column);
    const double cost = lp.model().cost[static_cast<std::size_t>(column)];
    if (role.kind == ColumnKind::kReels) {
      reel = std::max(reel, reelCost(problem, role, cost));
    } else if (role.kind == ColumnKind::kShip) {
      ship = std::max(ship, cost);
    }
  }
  return reel + ship;
}

std::vector<double> mergedObjective(const PlanProblem &problem, const CompactLp &lp) {
  std::vector<double> costs = lp.model().cost;
  double leastWeight = 1;
  for (const int column : lp.unmetColumns()) {
    const double weight = lp.unmetWeight(problem, column);
    leastWeight = weight > 0 ? std::min(leastWeight, weight) : leastWeight;
  }
  const double penalty = (1 + 2 * dearestRoll(problem, lp)) / leastWeight;
  for (const int column : lp.unmetColumns()) {
    costs[static_cast<std::size_t>(column)] = penalty * lp.unmetWeight(problem, column);
  }
  return costs;
}

template <typename Value>
std::span<const Value> slice(const std::vector<Value> &values, const std::vector<int> &start,
                             int index) {
  const auto at = static_cast<std::size_t>(index);
  return {values.data() + start[at], values.data() + start[at + 1]};
}

}  // namespace

ReelSpace::ReelSpace(const PlanProblem &problem, const CompactLp &lp)
    : problem_(problem), lp_(lp), costs_(mergedObjective(problem, lp)) {
  for (int column = 0; column < model().columns(); ++column) {
    if (lp.column(column).kind == ColumnKind::kReels) {
      reels_.push_back(column);
    }
  }
  listColumnsByRow();
}

void ReelSpace::listColumnsByRow() {
  rowStart_.assign(static_cast<std::size_t>(model().rows()) + 1, 0);
  for (const int row : model().rowOf) {
    ++rowStart_[static_cast<std::size_t>(row) + 1];
  }
  std::partial_sum(rowStart_.begin(), rowStart_.end(), rowStart_.begin());
  rowColumns_.resize(model().rowOf.size());
  std::vector<int> next = rowStart_;
  for (int column = 0; column < model().columns(); ++column) {
    for (const int row : rowsOf(column)) {
      rowColumns_[static_cast<std::size_t>(next[static_cast<std::size_t>(row)]++)] = column;
    }
  }
}

double ReelSpace::objectiveOf(const std::vector<double> &values) const {
  return std::inner_product(values.begin(), values.end(), costs_.begin(), 0.0);
}

std::span<const int> ReelSpace::rowsOf(int column) const {
  return slice(model().rowOf, model().start, column);
}

std::span<const double> ReelSpace::entriesOf(int column) const {
  return slice(model().value, model().start, column);
}

std::span<const int> ReelSpace::columnsOf(int row) const {
  return slice(rowColumns_, rowStart_, row);
}

}  // namespace corvane::plan
