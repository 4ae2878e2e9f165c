#include "solver/working_lp.h"

#include <ClpFactorization.hpp>
#include <ClpPrimalColumnDantzig.hpp>
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

// From this many rows on, CLP's own factorisation updates sparse vectors in a way that costs its
// primal simplex more than it saves on bases as dense as those of a warm start; its other one does
// not.
constexpr int kManyRows = 350;
constexpr int kOslFactorization = 3;

// Up to this many rows, Dantzig's rule takes hardly more pivots than steepest edges, and each of
// them costs less.
constexpr int kFewRows = 64;

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
double scaleFor(double largest) {
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
double clpBound(double bound, double scale) {
  if (std::isinf(bound)) {
    return bound > 0.0 ? COIN_DBL_MAX : -COIN_DBL_MAX;
  }
  return bound * scale;
}

std::vector<double> clpBounds(const std::vector<double> &bounds, double scale) {
  std::vector<double> result;
  result.reserve(bounds.size());
  for (const double bound : bounds) {
    result.push_back(clpBound(bound, scale));
  }
  return result;
}

// Chosen columns as the arrays that CLP loads.
struct ColumnArrays {
  std::vector<double> cost, lower, upper, value;
  std::vector<int> start, row;

  ColumnArrays(const ColumnPool &pool, std::span<const int> columns, double costScale,
               double boundScale) {
    start.push_back(0);
    for (const int column : columns) {
      const auto j = static_cast<std::size_t>(column);
      cost.push_back(pool.cost[j] * costScale);
      lower.push_back(clpBound(pool.lower[j], boundScale));
      upper.push_back(clpBound(pool.upper[j], boundScale));
      row.insert(row.end(), pool.row.begin() + pool.start[j], pool.row.begin() + pool.start[j + 1]);
      value.insert(value.end(), pool.value.begin() + pool.start[j],
                   pool.value.begin() + pool.start[j + 1]);
      start.push_back(static_cast<int>(row.size()));
    }
  }
};

Status statusOf(const ClpSimplex &clp) {
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
      costScale_(scaleFor(lp.largestCost())),
      boundScale_(scaleFor(lp.largestBound())),
      silence_(std::make_unique<Silence>()),
      clp_(std::make_unique<ClpSimplex>()) {
  guarded([&] { load(); });
}

void WorkingLp::load() {
  clp_->passInMessageHandler(silence_.get());
  clp_->setLogLevel(0);
  clp_->scaling(0);
  const ColumnArrays arrays(lp_.pool(), columns_, costScale_, boundScale_);
  const std::vector<double> rowLower = clpBounds(lp_.rowLower(), boundScale_);
  const std::vector<double> rowUpper = clpBounds(lp_.rowUpper(), boundScale_);
  clp_->loadProblem(static_cast<int>(columns_.size()), lp_.rows(), arrays.start.data(),
                    arrays.row.data(), arrays.value.data(), arrays.lower.data(),
                    arrays.upper.data(), arrays.cost.data(), rowLower.data(), rowUpper.data());
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

void WorkingLp::addColumns(std::span<const int> columns) {
  const ColumnArrays arrays(lp_.pool(), columns, costScale_, boundScale_);
  columns_.insert(columns_.end(), columns.begin(), columns.end());
  guarded([&] {
    clp_->addColumns(static_cast<int>(columns.size()), arrays.lower.data(), arrays.upper.data(),
                     arrays.cost.data(), arrays.start.data(), arrays.row.data(),
                     arrays.value.data());
  });
}

Status WorkingLp::run(bool useDual) {
  constexpr double kIterationsPerLine = 200.0;
  const double lines = static_cast<double>(columns_.size()) + lp_.rows();
  clp_->setMaximumIterations(static_cast<int>(std::min(10000.0 + kIterationsPerLine * lines, 1e9)));
  guarded([&] { useDual ? clp_->dual() : clp_->primal(); });
  return statusOf(*clp_);
}

Status WorkingLp::primal() {
  return run(false);
}

Status WorkingLp::dual() {
  return run(true);
}

void WorkingLp::expectWarmStarts() {
  if (lp_.rows() >= kManyRows) {
    guarded([&] { clp_->factorization()->forceOtherFactorization(kOslFactorization); });
  } else if (lp_.rows() <= kFewRows) {
    guarded([&] {
      ClpPrimalColumnDantzig dantzig;
      clp_->setPrimalColumnPivotAlgorithm(dantzig);
    });
  }
}

Status WorkingLp::barrier() {
  guarded([&] { solveByBarrier(*clp_); });
  return run(true);
}

bool WorkingLp::isBasic(int position) const {
  return clp_->getColumnStatus(position) == ClpSimplex::basic;
}

bool WorkingLp::rowIsBasic(int row) const {
  return clp_->getRowStatus(row) == ClpSimplex::basic;
}

void WorkingLp::makeBasic(int position) {
  clp_->setColumnStatus(position, ClpSimplex::basic);
}

void WorkingLp::makeRowNonbasic(int row) {
  clp_->setRowStatus(row, ClpSimplex::atLowerBound);
}

// CLP's value within the column's bounds, which a basic column may leave by CLP's tolerance.
double WorkingLp::value(int position) const {
  const auto column = static_cast<std::size_t>(columns_[static_cast<std::size_t>(position)]);
  const double raw = clp_->primalColumnSolution()[position];
  const double value = std::fabs(raw) < kZeroActivity ? 0.0 : raw / boundScale_;
  return std::min(std::max(value, lp_.pool().lower[column]), lp_.pool().upper[column]);
}

std::vector<double> WorkingLp::duals() const {
  const double *prices = clp_->dualRowSolution();
  std::vector<double> duals;
  duals.reserve(static_cast<std::size_t>(lp_.rows()));
  for (int i = 0; i < lp_.rows(); ++i) {
    const auto row = static_cast<std::size_t>(i);
    double dual = prices[i] / costScale_;
    // A row that is free on one side prices one way only; CLP's tolerance may leave a trace.
    if ((std::isinf(lp_.rowUpper()[row]) && dual < 0.0) ||
        (std::isinf(lp_.rowLower()[row]) && dual > 0.0)) {
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

bool WorkingLp::scalesStillFit() const {
  return scaleFor(lp_.largestCost()) == costScale_ && scaleFor(lp_.largestBound()) == boundScale_;
}

}  // namespace corvane::lp
