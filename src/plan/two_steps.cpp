#include "plan/two_steps.h"

#include <algorithm>
#include <cmath>

namespace corvane::plan {

namespace {

// What a solver's tolerances leave of 0.
constexpr double kNothing = 1e-7;

}  // namespace

TwoSteps::TwoSteps(const PlanProblem &problem, const CompactLp &lp, LinearSolver &solver,
                   const SolveOptions &options)
    : problem_(problem), lp_(lp), solver_(solver), method_(options.method.value_or(Method::kDual)) {
  solver_.setTimeLimit(options.timeLimit);
}

LinearSolution TwoSteps::solve() {
  boundUnmet(true);
  LinearSolution solution = solver_.solve(method_);
  if (solution.status != Status::kInfeasible) {
    return solution;
  }
  solution = firstStep();
  return solution.status == Status::kOptimal ? secondStep() : solution;
}

LinearSolution TwoSteps::firstStep() {
  boundUnmet(false);
  setCosts(true);
  LinearSolution solution = solver_.solve(Method::kPrimal);
  leastUnmet_ = std::max(solution.objective, 0.0);
  if (leastUnmet_ <= kNothing * (1.0 + demandInReach())) {
    leastUnmet_ = 0.0;
  }
  return solution;
}

LinearSolution TwoSteps::secondStep() {
  setCosts(false);
  if (leastUnmet_ == 0.0) {
    boundUnmet(true);
  } else {
    std::vector<double> weights;
    for (const int column : lp_.unmetColumns()) {
      weights.push_back(lp_.unmetWeight(problem_, column));
    }
    unmetRow_ = solver_.addRow(-kInfinite, leastUnmet_, lp_.unmetColumns(), weights);
  }
  return solver_.solve(Method::kPrimal);
}

void TwoSteps::boundUnmet(bool fixed) {
  for (const int column : lp_.unmetColumns()) {
    solver_.setColumnBounds(column, 0.0,
                            fixed ? 0.0 : lp_.model().upper[static_cast<std::size_t>(column)]);
  }
}

void TwoSteps::setCosts(bool shortage) {
  for (int column = 0; column < lp_.model().columns(); ++column) {
    solver_.setCost(column, shortage ? 0.0 : lp_.model().cost[static_cast<std::size_t>(column)]);
  }
  for (const int column : lp_.unmetColumns()) {
    solver_.setCost(column, shortage ? lp_.unmetWeight(problem_, column) : 0.0);
  }
}

double TwoSteps::demandInReach() const {
  double demand = 0.0;
  for (const int column : lp_.unmetColumns()) {
    demand += lp_.model().upper[static_cast<std::size_t>(column)];
  }
  return demand;
}

}  // namespace corvane::plan
