#pragma once

#include <utility>
#include <vector>

namespace corvane::lp {

enum class Status { kOptimal = 1, kUnbounded = 2, kInfeasible = 3, kOther = 6 };

// What a solve leaves. Only an optimal answer holds activities and duals.
struct Answer {
  Status status = Status::kOther;
  // (column, value) of every column whose value is not 0, by ascending column.
  std::vector<std::pair<int, double>> activities;
  // One for each row, of the minimisation: never negative on a >= row.
  std::vector<double> duals;
};

}  // namespace corvane::lp
