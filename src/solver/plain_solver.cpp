#include "solver/plain_solver.h"

#include <numeric>

#include "solver/trivial_lp.h"

namespace corvane::lp {

void PlainSolver::take_in_columns(const LinearProgram &lp) {
  if (working_ != nullptr && !working_->scales_still_fit()) {
    working_.reset();
  }
  const std::size_t held = working_ == nullptr ? 0 : working_->columns().size();
  std::vector<int> columns(static_cast<std::size_t>(lp.columns()) - held);
  std::iota(columns.begin(), columns.end(), static_cast<int>(held));
  if (working_ == nullptr) {
    working_ = std::make_unique<WorkingLp>(lp, std::move(columns));
  } else if (!columns.empty()) {
    working_->add_columns(columns);
  }
}

Answer PlainSolver::solve(const LinearProgram &lp, Method method) {
  if (std::optional<Answer> answer = solve_trivial(lp)) {
    return *std::move(answer);
  }
  if (method != Method::kPrimal) {
    working_.reset();
  }
  take_in_columns(lp);
  Status status = Status::kOther;
  switch (method) {
    case Method::kPrimal:
      status = working_->primal();
      break;
    case Method::kDual:
      status = working_->dual();
      break;
    case Method::kBarrier:
      status = working_->barrier();
      break;
  }
  if (status == Status::kOptimal) {
    return working_->answer();
  }
  // The basis of a failed solve is no place to go on from.
  working_.reset();
  Answer answer;
  answer.status = status;
  return answer;
}

}  // namespace corvane::lp
