#include "solver/plain_solver.h"

#include <numeric>

namespace corvane::lp {

void PlainSolver::takeInColumns(const LinearProgram &lp) {
  if (working_ != nullptr && !working_->stillFits()) {
    working_.reset();
  }
  const std::size_t held = working_ == nullptr ? 0 : working_->columns().size();
  std::vector<int> columns(static_cast<std::size_t>(lp.columns()) - held);
  std::iota(columns.begin(), columns.end(), static_cast<int>(held));
  if (working_ == nullptr) {
    working_ = std::make_unique<WorkingLp>(lp, std::move(columns));
  } else if (!columns.empty()) {
    working_->addColumns(columns);
  }
}

Status PlainSolver::run(Method method) {
  return method == Method::kDual ? working_->dual() : working_->primal();
}

Solution PlainSolver::solve(const LinearProgram &lp, Method method) {
  if (method == Method::kDual) {
    working_.reset();
  }
  takeInColumns(lp);
  Status status = run(method);
  // What one simplex gives up on, the other often settles.
  for (const Method again : {Method::kPrimal, Method::kDual}) {
    if (status == Status::kOther) {
      working_.reset();
      takeInColumns(lp);
      status = run(again);
    }
  }
  if (status == Status::kOptimal) {
    return {status, working_->activities(), working_->duals()};
  }
  // The basis of a failed solve is no place to go on from.
  working_.reset();
  return {status, {}, {}};
}

}  // namespace corvane::lp
