#include "solver/trivial_lp.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvane::lp {

namespace {

bool bounds_cross(const std::vector<double> &lower, const std::vector<double> &upper) {
  for (std::size_t i = 0; i < lower.size(); ++i) {
    if (lower[i] > upper[i] || lower[i] == kInfinity || upper[i] == -kInfinity) {
      return true;
    }
  }
  return false;
}

bool zero_satisfies_rows(const LinearProgram &lp) {
  return std::all_of(lp.row_lower().begin(), lp.row_lower().end(),
                     [](double bound) { return bound <= 0.0; }) &&
         std::all_of(lp.row_upper().begin(), lp.row_upper().end(),
                     [](double bound) { return bound >= 0.0; });
}

double cheapest_value(double cost, double lower, double upper) {
  if (cost > 0.0) {
    return lower;
  }
  if (cost < 0.0) {
    return upper;
  }
  return std::min(std::max(0.0, lower), upper);
}

Answer with_status(Status status) {
  Answer answer;
  answer.status = status;
  return answer;
}

Answer each_at_its_cheapest(const LinearProgram &lp) {
  Answer answer = with_status(Status::kOptimal);
  answer.duals.assign(static_cast<std::size_t>(lp.rows()), 0.0);
  const ColumnPool &pool = lp.pool();
  for (int j = 0; j < lp.columns(); ++j) {
    const auto column = static_cast<std::size_t>(j);
    const double x = cheapest_value(pool.cost[column], pool.lower[column], pool.upper[column]);
    if (std::isinf(x)) {
      return with_status(Status::kUnbounded);
    }
    if (x != 0.0) {
      answer.activities.emplace_back(j, x);
    }
  }
  return answer;
}

// A row that is demanded and that no column covers. Without one a covering program has a solution.
bool has_uncovered_row(const LinearProgram &lp) {
  std::vector<char> is_covered(static_cast<std::size_t>(lp.rows()), 0);
  for (const int row : lp.pool().row) {
    is_covered[static_cast<std::size_t>(row)] = 1;
  }
  for (std::size_t i = 0; i < is_covered.size(); ++i) {
    if (is_covered[i] == 0 && lp.row_lower()[i] > 0.0) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::optional<Answer> solve_trivial(const LinearProgram &lp) {
  if (bounds_cross(lp.row_lower(), lp.row_upper()) ||
      bounds_cross(lp.pool().lower, lp.pool().upper)) {
    return with_status(Status::kInfeasible);
  }
  if (lp.is_covering() && has_uncovered_row(lp)) {
    return with_status(Status::kInfeasible);
  }
  if (!lp.pool().row.empty() && !(lp.is_covering() && zero_satisfies_rows(lp))) {
    return std::nullopt;
  }
  return zero_satisfies_rows(lp) ? each_at_its_cheapest(lp) : with_status(Status::kInfeasible);
}

}  // namespace corvane::lp
