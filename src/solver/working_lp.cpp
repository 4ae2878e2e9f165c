#include "solver/working_lp.h"

#include <ClpFactorization.hpp>
#include <ClpPrimalColumnDantzig.hpp>
#include <ClpSimplex.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "solver/clp_model.h"

namespace corvane::lp {

namespace {

// A value of this size or less is 0 to the caller, who takes every activity above 0 for use.
constexpr double kZeroActivity = 1e-9;

constexpr int kOslFactorization = 3;

// A row of a covering program that demands nothing holds whatever the columns are. CLP's barrier
// ends the process on some of those that no column covers, so none is handed over.
std::vector<int> rowsThatMayBind(const LinearProgram &lp) {
  std::vector<int> rows;
  for (int row = 0; row < lp.rows(); ++row) {
    if (!lp.isCovering() || lp.rowLower()[static_cast<std::size_t>(row)] > 0.0) {
      rows.push_back(row);
    }
  }
  return rows;
}

std::vector<double> clpBounds(const std::vector<double> &bounds, const std::vector<int> &rows,
                              double scale) {
  std::vector<double> result;
  result.reserve(rows.size());
  for (const int row : rows) {
    result.push_back(clpBound(bounds[static_cast<std::size_t>(row)], scale));
  }
  return result;
}

// The place of every row in the list, -1 for those that are not in it.
std::vector<int> placesOf(const std::vector<int> &rows, int count) {
  std::vector<int> places(static_cast<std::size_t>(count), -1);
  for (std::size_t at = 0; at < rows.size(); ++at) {
    places[static_cast<std::size_t>(rows[at])] = static_cast<int>(at);
  }
  return places;
}

}  // namespace

WorkingLp::WorkingLp(const LinearProgram &lp, std::vector<int> columns)
    : lp_(lp),
      columns_(std::move(columns)),
      rows_(rowsThatMayBind(lp)),
      clpRow_(placesOf(rows_, lp.rows())),
      costScale_(scaleFor(lp.largestCost())),
      boundScale_(scaleFor(lp.largestDemand())),
      silence_(std::make_unique<Silence>()),
      clp_(std::make_unique<ClpSimplex>()) {
  guarded([&] { load(); });
}

void WorkingLp::load() {
  clp_->passInMessageHandler(silence_.get());
  clp_->setLogLevel(0);
  clp_->scaling(0);
  const ColumnArrays arrays(lp_.pool(), columns_, clpRow_, costScale_, boundScale_);
  const std::vector<double> rowLower = clpBounds(lp_.rowLower(), rows_, boundScale_);
  const std::vector<double> rowUpper = clpBounds(lp_.rowUpper(), rows_, boundScale_);
  clp_->loadProblem(static_cast<int>(columns_.size()), static_cast<int>(rows_.size()),
                    arrays.start.data(), arrays.row.data(), arrays.value.data(),
                    arrays.lower.data(), arrays.upper.data(), arrays.cost.data(), rowLower.data(),
                    rowUpper.data());
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
  const ColumnArrays arrays(lp_.pool(), columns, clpRow_, costScale_, boundScale_);
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

void WorkingLp::expectWarmStarts(const Thresholds &thresholds) {
  if (lp_.rows() >= thresholds.otherFactorRows) {
    guarded([&] { clp_->factorization()->forceOtherFactorization(kOslFactorization); });
  } else if (lp_.rows() <= thresholds.dantzigRows) {
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
  const int at = clpRow_[static_cast<std::size_t>(row)];
  return at < 0 || clp_->getRowStatus(at) == ClpSimplex::basic;
}

void WorkingLp::makeBasic(int position) {
  clp_->setColumnStatus(position, ClpSimplex::basic);
}

void WorkingLp::makeRowNonbasic(int row) {
  clp_->setRowStatus(clpRow_[static_cast<std::size_t>(row)], ClpSimplex::atLowerBound);
}

void WorkingLp::setCost(int position, double cost) {
  clp_->setObjectiveCoefficient(position, cost);
}

void WorkingLp::forbidExcess(int row) {
  const int at = clpRow_[static_cast<std::size_t>(row)];
  clp_->setRowUpper(at, clp_->rowLower()[at]);
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
  std::vector<double> duals(static_cast<std::size_t>(lp_.rows()), 0.0);
  for (std::size_t at = 0; at < rows_.size(); ++at) {
    const auto row = static_cast<std::size_t>(rows_[at]);
    duals[row] = possiblePrice(prices[at] / costScale_, lp_.rowLower()[row], lp_.rowUpper()[row]);
  }
  return duals;
}

Activities WorkingLp::activities() const {
  Activities activities;
  for (int position = 0; position < static_cast<int>(columns_.size()); ++position) {
    if (const double x = value(position); x != 0.0) {
      activities.emplace_back(columns_[static_cast<std::size_t>(position)], x);
    }
  }
  std::sort(activities.begin(), activities.end());
  return activities;
}

bool WorkingLp::stillFits() const {
  return scaleFor(lp_.largestCost()) == costScale_ &&
         scaleFor(lp_.largestDemand()) == boundScale_ &&
         (lp_.isCovering() || static_cast<int>(rows_.size()) == lp_.rows());
}

}  // namespace corvane::lp
