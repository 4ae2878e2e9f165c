#include "solver/trivial_lp.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvane::lp {

namespace {

bool boundsCross(const std::vector<double> &lower, const std::vector<double> &upper) {
  for (std::size_t i = 0; i < lower.size(); ++i) {
    if (lower[i] > upper[i] || lower[i] == kInfinity || upper[i] == -kInfinity) {
      return true;
    }
  }
  return false;
}

bool zeroSatisfiesRows(const LinearProgram &lp) {
  return std::all_of(lp.rowLower().begin(), lp.rowLower().end(),
                     [](double bound) { return bound <= 0.0; }) &&
         std::all_of(lp.rowUpper().begin(), lp.rowUpper().end(),
                     [](double bound) { return bound >= 0.0; });
}

double cheapestValue(double cost, double lower, double upper) {
  if (cost > 0.0) {
    return lower;
  }
  if (cost < 0.0) {
    return upper;
  }
  return std::min(std::max(0.0, lower), upper);
}

Solution withStatus(Status status) {
  return {status, {}, {}};
}

Solution eachAtItsCheapest(const LinearProgram &lp) {
  Solution solution = withStatus(Status::kOptimal);
  solution.duals.assign(static_cast<std::size_t>(lp.rows()), 0.0);
  const ColumnPool &pool = lp.pool();
  for (int j = 0; j < lp.columns(); ++j) {
    const auto column = static_cast<std::size_t>(j);
    const double x = cheapestValue(pool.cost[column], pool.lower[column], pool.upper[column]);
    if (std::isinf(x)) {
      return withStatus(Status::kUnbounded);
    }
    if (x != 0.0) {
      solution.activities.emplace_back(j, x);
    }
  }
  return solution;
}

// A row that is demanded and that no column covers. Without one a covering program has a solution.
bool hasUncoveredRow(const LinearProgram &lp) {
  std::vector<char> isCovered(static_cast<std::size_t>(lp.rows()), 0);
  for (const int row : lp.pool().row) {
    isCovered[static_cast<std::size_t>(row)] = 1;
  }
  for (std::size_t i = 0; i < isCovered.size(); ++i) {
    if (isCovered[i] == 0 && lp.rowLower()[i] > 0.0) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::optional<Solution> solveTrivial(const LinearProgram &lp) {
  if (boundsCross(lp.rowLower(), lp.rowUpper()) || boundsCross(lp.pool().lower, lp.pool().upper)) {
    return withStatus(Status::kInfeasible);
  }
  if (lp.isCovering() && hasUncoveredRow(lp)) {
    return withStatus(Status::kInfeasible);
  }
  if (!lp.pool().row.empty() && !(lp.isCovering() && zeroSatisfiesRows(lp))) {
    return std::nullopt;
  }
  return zeroSatisfiesRows(lp) ? eachAtItsCheapest(lp) : withStatus(Status::kInfeasible);
}

}  // namespace corvane::lp
