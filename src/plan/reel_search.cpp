#include "plan/reel_search.h"

#include <cmath>
#include <numeric>

namespace corvane::plan {

namespace {

template <typename Value>
std::span<const Value> slice(const std::vector<Value> &values, const std::vector<int> &start,
                             int index) {
  const auto at = static_cast<std::size_t>(index);
  return {values.data() + start[at], values.data() + start[at + 1]};
}

}  // namespace

bool isBetter(const ReelPlan &plan, const ReelPlan &other) {
  const double noise = kLeastRolls + kNoisePart * std::fabs(other.unmet);
  if (std::fabs(plan.unmet - other.unmet) > noise) {
    return plan.unmet < other.unmet;
  }
  return plan.cost < other.cost - kLeastGain - kNoisePart * std::fabs(other.cost);
}

ReelSpace::ReelSpace(const PlanProblem &problem, const CompactLp &lp)
    : problem_(problem), lp_(lp), unmetWeights_(costs().size()) {
  for (const int column : lp.unmetColumns()) {
    unmetWeights_[static_cast<std::size_t>(column)] = lp.unmetWeight(problem, column);
  }
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

ReelPlan ReelSpace::planOf(std::vector<double> values) const {
  const auto sum = [&](const std::vector<double> &factors) {
    return std::inner_product(values.begin(), values.end(), factors.begin(), 0.0);
  };
  const double unmet = sum(unmetWeights_);
  const double cost = sum(costs());
  return {std::move(values), unmet, cost};
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
