#include "solver/clp_model.h"

#include <ClpSimplex.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvane::lp {

namespace {

// CLP's crossover stops with columns between their bounds that are not basic ("super basic"), far
// from a vertex. At a bound they cost a few dual iterations and the answer is a vertex again.
ClpSimplex::Status nearestBound(ClpSimplex::Status status, double lower, double upper) {
  if (status == ClpSimplex::basic || status == ClpSimplex::atLowerBound ||
      status == ClpSimplex::atUpperBound || status == ClpSimplex::isFixed) {
    return status;
  }
  if (lower > -COIN_DBL_MAX) {
    return ClpSimplex::atLowerBound;
  }
  return upper < COIN_DBL_MAX ? ClpSimplex::atUpperBound : ClpSimplex::isFree;
}

double valueAt(ClpSimplex::Status status, double value, double lower, double upper) {
  switch (status) {
    case ClpSimplex::atLowerBound:
    case ClpSimplex::isFixed:
      return lower;
    case ClpSimplex::atUpperBound:
      return upper;
    case ClpSimplex::isFree:
      return 0.0;
    default:
      return value;
  }
}

}  // namespace

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

double clpBound(double bound, double scale) {
  if (std::isinf(bound)) {
    return bound > 0.0 ? COIN_DBL_MAX : -COIN_DBL_MAX;
  }
  return bound * scale;
}

double possiblePrice(double price, double lower, double upper) {
  const bool isImpossible =
      (std::isinf(upper) && price < 0.0) || (std::isinf(lower) && price > 0.0);
  return isImpossible ? 0.0 : price + 0.0;
}

ColumnArrays::ColumnArrays(const ColumnPool &pool, std::span<const int> columns,
                           std::span<const int> clpRow, double costScale, double boundScale) {
  start.push_back(0);
  for (const int column : columns) {
    const auto j = static_cast<std::size_t>(column);
    cost.push_back(pool.cost[j] * costScale);
    lower.push_back(clpBound(pool.lower[j], boundScale));
    upper.push_back(clpBound(pool.upper[j], boundScale));
    const auto end = static_cast<std::size_t>(pool.start[j + 1]);
    for (auto k = static_cast<std::size_t>(pool.start[j]); k < end; ++k) {
      if (const int at = clpRow[static_cast<std::size_t>(pool.row[k])]; at >= 0) {
        row.push_back(at);
        value.push_back(pool.value[k]);
      }
    }
    start.push_back(static_cast<int>(row.size()));
  }
}

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

void solveByBarrier(ClpSimplex &clp) {
  clp.barrier(true);
  for (int j = 0; j < clp.numberColumns(); ++j) {
    const double lower = clp.columnLower()[j];
    const double upper = clp.columnUpper()[j];
    const auto status = nearestBound(clp.getColumnStatus(j), lower, upper);
    clp.setColumnStatus(j, status);
    double &x = clp.primalColumnSolution()[j];
    x = valueAt(status, x, lower, upper);
  }
  for (int i = 0; i < clp.numberRows(); ++i) {
    const double lower = clp.rowLower()[i];
    const double upper = clp.rowUpper()[i];
    const auto status = nearestBound(clp.getRowStatus(i), lower, upper);
    clp.setRowStatus(i, status);
    double &activity = clp.primalRowSolution()[i];
    activity = valueAt(status, activity, lower, upper);
  }
}

}  // namespace corvane::lp
