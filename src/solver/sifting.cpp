#include "solver/sifting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

#include "solver/column_choice.h"

namespace corvane::lp {

namespace {

// A reduced cost above this is as good as none, for costs of ordinary size.
constexpr double kPricingTolerance = 1e-9;

constexpr double kObjectiveTolerance = 1e-9;

}  // namespace

bool objectivesAgree(const LinearProgram &lp, const Solution &solution) {
  const double primal = objectiveValue(lp, solution.activities);
  double dual = 0.0;
  for (std::size_t i = 0; i < solution.duals.size(); ++i) {
    dual += solution.duals[i] == 0.0 ? 0.0 : solution.duals[i] * lp.rowLower()[i];
  }
  return std::fabs(primal - dual) <= kObjectiveTolerance * std::fabs(primal);
}

Sifting::Sifting(const LinearProgram &lp, const std::vector<int> &columns,
                 const Thresholds &thresholds)
    : lp_(lp), thresholds_(thresholds) {
  rebuild(columns);
}

void Sifting::rebuild(const std::vector<int> &columns) {
  isIn_.assign(static_cast<std::size_t>(lp_.columns()), 0);
  for (const int column : columns) {
    isIn_[static_cast<std::size_t>(column)] = 1;
  }
  working_ = std::make_unique<WorkingLp>(lp_, columns);
}

void Sifting::moveIn(const std::vector<int> &columns) {
  isIn_.resize(static_cast<std::size_t>(lp_.columns()), 0);
  for (const int column : columns) {
    isIn_[static_cast<std::size_t>(column)] = 1;
  }
  working_->addColumns(columns);
}

void Sifting::takeInFrom(int begin) {
  std::vector<int> columns;
  for (int j = begin; j < lp_.columns(); ++j) {
    columns.push_back(j);
  }
  if (!columns.empty()) {
    moveIn(columns);
  }
}

bool Sifting::moveInViolated(const std::vector<double> &duals) {
  isIn_.resize(static_cast<std::size_t>(lp_.columns()), 0);
  if (static_cast<int>(working_->columns().size()) == lp_.columns()) {
    return false;
  }
  const double tolerance = -kPricingTolerance / working_->costScale();
  std::vector<PricedColumn> violated;
  for (int j = 0; j < lp_.columns(); ++j) {
    if (isIn_[static_cast<std::size_t>(j)] != 0) {
      continue;
    }
    if (const double d = reducedCost(lp_.pool(), j, duals.data()); d < tolerance) {
      violated.push_back({d, j});
    }
  }
  if (violated.empty()) {
    return false;
  }
  const int count = std::max(thresholds_.leastMovedIn, lp_.rows());
  moveIn(columnsToMoveIn(lp_.pool(), lp_.rows(), std::move(violated),
                         static_cast<std::size_t>(count)));
  return true;
}

Status Sifting::solveWorkingSet(Method method) {
  switch (method) {
    case Method::kPrimal:
      return working_->primal();
    case Method::kDual:
      return working_->dual();
    case Method::kBarrier:
      return working_->barrier();
  }
  return Status::kOther;
}

Status Sifting::sift(Method first) {
  Status status = solveWorkingSet(first);
  while (status == Status::kOptimal && moveInViolated(working_->duals())) {
    status = working_->primal();
  }
  solution_ = {};
  if (status == Status::kOptimal) {
    solution_ = {status, working_->activities(), working_->duals()};
  }
  return status;
}

Status Sifting::optimise(Method first) {
  if (!working_->stillFits()) {
    rebuild(std::vector<int>(working_->columns()));
  }
  if (first == Method::kPrimal) {
    working_->expectWarmStarts(thresholds_);
  }
  Status status = sift(first);
  if (status == Status::kOptimal && !objectivesAgree(lp_, solution_)) {
    status = sift(Method::kPrimal);
  }
  return status == Status::kOptimal && !objectivesAgree(lp_, solution_) ? Status::kOther : status;
}

void Sifting::dropSurplus(const std::vector<double> &duals) {
  const auto rows = static_cast<std::size_t>(lp_.rows());
  const std::vector<int> &held = working_->columns();
  if (held.size() <= static_cast<std::size_t>(thresholds_.surplusPerRow) * rows) {
    return;
  }
  std::vector<int> basic;
  std::vector<PricedColumn> others;
  for (int position = 0; position < static_cast<int>(held.size()); ++position) {
    const int column = held[static_cast<std::size_t>(position)];
    if (working_->isBasic(position)) {
      basic.push_back(column);
    } else {
      others.push_back({reducedCost(lp_.pool(), column, duals.data()), column});
    }
  }
  const std::size_t room = static_cast<std::size_t>(thresholds_.keptPerRow) * rows;
  const std::vector<int> best =
      lowestColumns(std::move(others), room - std::min(room, basic.size()));
  rebuildAtBasis(basic, best);
}

// The working set of the present basis's columns and the others, at that basis.
void Sifting::rebuildAtBasis(const std::vector<int> &basic, const std::vector<int> &others) {
  std::vector<int> nonbasicRows;
  for (int row = 0; row < lp_.rows(); ++row) {
    if (!working_->rowIsBasic(row)) {
      nonbasicRows.push_back(row);
    }
  }
  std::vector<int> kept = basic;
  kept.insert(kept.end(), others.begin(), others.end());
  rebuild(kept);
  for (int position = 0; position < static_cast<int>(basic.size()); ++position) {
    working_->makeBasic(position);
  }
  for (const int row : nonbasicRows) {
    working_->makeRowNonbasic(row);
  }
}

}  // namespace corvane::lp
