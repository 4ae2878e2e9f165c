#include "solver/barrier.h"

#include <ClpSimplex.hpp>

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
