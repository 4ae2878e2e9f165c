#include "solver/sifting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <tuple>
#include <utility>

namespace corvane::lp {

namespace {

// A reduced cost above this is as good as none, for costs of ordinary size.
constexpr double kPricingTolerance = 1e-9;
constexpr int kLeastMovedIn = 50;

constexpr double kObjectiveTolerance = 1e-9;

struct Priced {
  double reducedCost;
  int column;

  // By reduced cost, then by age: the order does not depend on the sorting algorithm.
  bool operator<(const Priced &other) const {
    return std::tie(reducedCost, column) < std::tie(other.reducedCost, other.column);
  }
};

// The `count` first in order, in the order of the pool.
std::vector<int> firstColumns(std::vector<Priced> &candidates, std::size_t count) {
  if (candidates.size() > count) {
    std::nth_element(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(count),
                     candidates.end());
    candidates.resize(count);
  }
  std::vector<int> columns;
  columns.reserve(candidates.size());
  for (const Priced &candidate : candidates) {
    columns.push_back(candidate.column);
  }
  std::sort(columns.begin(), columns.end());
  return columns;
}

}  // namespace

Sifting::Sifting(const LinearProgram &lp, const std::vector<int> &columns) : lp_(lp) {
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
  std::vector<Priced> violated;
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
  moveIn(firstColumns(violated, static_cast<std::size_t>(std::max(kLeastMovedIn, lp_.rows()))));
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

// Of a covering program the objective of the columns is that of the rows' duals, at the optimum
// and nowhere else. CLP now and then stops with traces of its perturbation in either.
bool Sifting::objectivesAgree() const {
  double primal = 0.0;
  for (const auto &[column, x] : answer_.activities) {
    primal += lp_.pool().cost[static_cast<std::size_t>(column)] * x;
  }
  double dual = 0.0;
  for (std::size_t i = 0; i < answer_.duals.size(); ++i) {
    dual += answer_.duals[i] == 0.0 ? 0.0 : answer_.duals[i] * lp_.rowLower()[i];
  }
  return std::fabs(primal - dual) <= kObjectiveTolerance * std::fabs(primal);
}

Status Sifting::sift(Method first) {
  Status status = solveWorkingSet(first);
  while (status == Status::kOptimal && moveInViolated(working_->duals())) {
    status = working_->primal();
  }
  answer_ = status == Status::kOptimal ? working_->answer() : Answer();
  return status;
}

Status Sifting::optimise(Method first) {
  if (!working_->scalesStillFit()) {
    rebuild(std::vector<int>(working_->columns()));
  }
  if (first == Method::kPrimal) {
    working_->expectWarmStarts();
  }
  Status status = sift(first);
  if (status == Status::kOptimal && !objectivesAgree()) {
    status = sift(Method::kPrimal);
  }
  return status == Status::kOptimal && !objectivesAgree() ? Status::kOther : status;
}

void Sifting::dropSurplus(const std::vector<double> &duals) {
  const auto rows = static_cast<std::size_t>(lp_.rows());
  const std::vector<int> &held = working_->columns();
  if (held.size() <= 3 * rows) {
    return;
  }
  std::vector<int> kept;
  std::vector<Priced> others;
  for (int position = 0; position < static_cast<int>(held.size()); ++position) {
    const int column = held[static_cast<std::size_t>(position)];
    if (working_->isBasic(position)) {
      kept.push_back(column);
    } else {
      others.push_back({reducedCost(lp_.pool(), column, duals.data()), column});
    }
  }
  const std::vector<int> basic = kept;
  const std::vector<int> best = firstColumns(others, 2 * rows - std::min(2 * rows, kept.size()));
  kept.insert(kept.end(), best.begin(), best.end());
  std::unique_ptr<WorkingLp> old = std::move(working_);
  rebuild(kept);
  for (int position = 0; position < static_cast<int>(basic.size()); ++position) {
    working_->makeBasic(position);
  }
  for (int row = 0; row < lp_.rows(); ++row) {
    if (!old->rowIsBasic(row)) {
      working_->makeRowNonbasic(row);
    }
  }
}

}  // namespace corvane::lp
