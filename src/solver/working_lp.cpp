#include "solver/working_lp.h"

#include <ClpSimplex.hpp>
#include <CoinMessageHandler.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "solver/barrier.h"

namespace corvane::lp {

namespace {

// A value of this size or less is 0 to the caller, who takes every activity above 0 for use.
constexpr double kZeroActivity = 1e-9;

// Swallows what CLP would say, whatever its level.
class Silence : public CoinMessageHandler {
 public:
  Silence() { setLogLevel(0); }
  int print() override { return 0; }
  CoinMessageHandler *clone() const override { return new Silence(*this); }
};

// The power of two that brings a largest magnitude to the nearer end of what CLP's absolute
// tolerances are made for; 1 for ordinary sizes. No further than that end, so that the small
// numbers beside a large one stay above the tolerances.
double scale_for(double largest) {
  constexpr int kLowestExponent = -10;
  constexpr int kHighestExponent = 20;
  if (largest == 0.0) {
    return 1.0;
  }
  int exponent = 0;
  std::frexp(largest, &exponent);
  if (exponent > kHighestExponent) {
    return std::ldexp(1.0, kHighestExponent - exponent);
  }
  return exponent < kLowestExponent ? std::ldexp(1.0, std::min(kLowestExponent - exponent, 1000))
                                    : 1.0;
}

// CLP's own infinity is the largest double.
double clp_bound(double bound, double scale) {
  if (std::isinf(bound)) {
    return bound > 0.0 ? COIN_DBL_MAX : -COIN_DBL_MAX;
  }
  return bound * scale;
}

std::vector<double> clp_bounds(const std::vector<double> &bounds, double scale) {
  std::vector<double> result;
  result.reserve(bounds.size());
  for (const double bound : bounds) {
    result.push_back(clp_bound(bound, scale));
  }
  return result;
}

// Chosen columns as the arrays that CLP loads.
struct ColumnArrays {
  std::vector<double> cost, lower, upper, value;
  std::vector<int> start, row;

  ColumnArrays(const ColumnPool &pool, std::span<const int> columns, double cost_scale,
               double bound_scale) {
    start.push_back(0);
    for (const int column : columns) {
      const auto j = static_cast<std::size_t>(column);
      cost.push_back(pool.cost[j] * cost_scale);
      lower.push_back(clp_bound(pool.lower[j], bound_scale));
      upper.push_back(clp_bound(pool.upper[j], bound_scale));
      row.insert(row.end(), pool.row.begin() + pool.start[j], pool.row.begin() + pool.start[j + 1]);
      value.insert(value.end(), pool.value.begin() + pool.start[j],
                   pool.value.begin() + pool.start[j + 1]);
      start.push_back(static_cast<int>(row.size()));
    }
  }
};

Status status_of(const ClpSimplex &clp) {
  switch (clp.status()) {
    case 0:
      return Status::kOptimal;
    case 1:
      return Status::kInfeasible;
    case 2:
      return Status::kUnbounded;
    default:
      return Status::kOther;
  }
}

}  // namespace

WorkingLp::WorkingLp(const LinearProgram &lp, std::vector<int> columns)
    : lp_(lp),
      columns_(std::move(columns)),
      cost_scale_(scale_for(lp.largest_cost())),
      bound_scale_(scale_for(lp.largest_bound())),
      silence_(std::make_unique<Silence>()),
      clp_(std::make_unique<ClpSimplex>()) {
  guarded([&] { load(); });
}

void WorkingLp::load() {
  clp_->passInMessageHandler(silence_.get());
  clp_->setLogLevel(0);
  clp_->scaling(0);
  const ColumnArrays arrays(lp_.pool(), columns_, cost_scale_, bound_scale_);
  const std::vector<double> row_lower = clp_bounds(lp_.row_lower(), bound_scale_);
  const std::vector<double> row_upper = clp_bounds(lp_.row_upper(), bound_scale_);
  clp_->loadProblem(static_cast<int>(columns_.size()), lp_.rows(), arrays.start.data(),
                    arrays.row.data(), arrays.value.data(), arrays.lower.data(),
                    arrays.upper.data(), arrays.cost.data(), row_lower.data(), row_upper.data());
  clp_->allSlackBasis(true);
}

// A CLP model that ran out of memory frees its arrays twice when it is destroyed. It is left alone
// instead, together with the message handler that it points to.
template <typename Operation>
void WorkingLp::guarded(Operation operation) {
  try {
    operation();
  } catch (...) {
    static_cast<void>(clp_.release());
    static_cast<void>(silence_.release());
    throw;
  }
}

WorkingLp::~WorkingLp() = default;

void WorkingLp::add_columns(std::span<const int> columns) {
  const ColumnArrays arrays(lp_.pool(), columns, cost_scale_, bound_scale_);
  columns_.insert(columns_.end(), columns.begin(), columns.end());
  guarded([&] {
    clp_->addColumns(static_cast<int>(columns.size()), arrays.lower.data(), arrays.upper.data(),
                     arrays.cost.data(), arrays.start.data(), arrays.row.data(),
                     arrays.value.data());
  });
}

Status WorkingLp::run(bool use_dual) {
  constexpr double kIterationsPerLine = 200.0;
  const double lines = static_cast<double>(columns_.size()) + lp_.rows();
  clp_->setMaximumIterations(static_cast<int>(std::min(10000.0 + kIterationsPerLine * lines, 1e9)));
  guarded([&] { use_dual ? clp_->dual() : clp_->primal(); });
  return status_of(*clp_);
}

Status WorkingLp::primal() {
  return run(false);
}

Status WorkingLp::dual() {
  return run(true);
}

Status WorkingLp::barrier() {
  guarded([&] { solve_by_barrier(*clp_); });
  return run(true);
}

bool WorkingLp::is_basic(int position) const {
  return clp_->getColumnStatus(position) == ClpSimplex::basic;
}

bool WorkingLp::row_is_basic(int row) const {
  return clp_->getRowStatus(row) == ClpSimplex::basic;
}

void WorkingLp::make_basic(int position) {
  clp_->setColumnStatus(position, ClpSimplex::basic);
}

void WorkingLp::make_row_nonbasic(int row) {
  clp_->setRowStatus(row, ClpSimplex::atLowerBound);
}

// CLP's value within the column's bounds, which a basic column may leave by CLP's tolerance.
double WorkingLp::value(int position) const {
  const auto column = static_cast<std::size_t>(columns_[static_cast<std::size_t>(position)]);
  const double raw = clp_->primalColumnSolution()[position];
  const double value = std::fabs(raw) < kZeroActivity ? 0.0 : raw / bound_scale_;
  return std::min(std::max(value, lp_.pool().lower[column]), lp_.pool().upper[column]);
}

std::vector<double> WorkingLp::duals() const {
  const double *prices = clp_->dualRowSolution();
  std::vector<double> duals;
  duals.reserve(static_cast<std::size_t>(lp_.rows()));
  for (int i = 0; i < lp_.rows(); ++i) {
    const auto row = static_cast<std::size_t>(i);
    double dual = prices[i] / cost_scale_;
    // A row that is free on one side prices one way only; CLP's tolerance may leave a trace.
    if ((std::isinf(lp_.row_upper()[row]) && dual < 0.0) ||
        (std::isinf(lp_.row_lower()[row]) && dual > 0.0)) {
      dual = 0.0;
    }
    duals.push_back(dual + 0.0);  // no negative zero
  }
  return duals;
}

Answer WorkingLp::answer() const {
  Answer answer;
  answer.status = Status::kOptimal;
  answer.duals = duals();
  for (int position = 0; position < static_cast<int>(columns_.size()); ++position) {
    if (const double x = value(position); x != 0.0) {
      answer.activities.emplace_back(columns_[static_cast<std::size_t>(position)], x);
    }
  }
  std::sort(answer.activities.begin(), answer.activities.end());
  return answer;
}

bool WorkingLp::scales_still_fit() const {
  return scale_for(lp_.largest_cost()) == cost_scale_ &&
         scale_for(lp_.largest_bound()) == bound_scale_;
}

}  // namespace corvane::lp
