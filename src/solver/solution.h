#pragma once

#include <utility>
#include <vector>

#include "solver/linear_program.h"

namespace corvane::lp {

enum class Method { kPrimal, kDual, kBarrier };

enum class Status { kOptimal = 1, kUnbounded = 2, kInfeasible = 3, kOther = 6 };

// (column, value) of every column whose value is not 0, by ascending column.
using Activities = std::vector<std::pair<int, double>>;

// What a solve leaves. Only an optimal one holds activities and duals.
struct Solution {
  Status status = Status::kOther;
  Activities activities;
  // One for each row, of the minimisation: never negative on a >= row.
  std::vector<double> duals;
};

// c'x.
inline double objectiveValue(const LinearProgram &lp, const Activities &activities) {
  double sum = 0.0;
  for (const auto &[column, x] : activities) {
    sum += lp.pool().cost[static_cast<std::size_t>(column)] * x;
  }
  return sum;
}

}  // namespace corvane::lp
