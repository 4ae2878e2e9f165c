#include "plan/two_steps.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvane::plan {

namespace {

// What a solver's tolerances leave of 0.
constexpr double kNothing = 1e-7;
// Of the weights of unmet rolls, so that the solver's tolerance for reduced costs is small beside
// what a reel of a quick machine is worth.
constexpr double kWeightScale = 1000.0;
// How many times as much as the machines can make is by far too much, and the pivots of the primal
// simplex, for each row, that are tried then: mills of 3 to 40 times as much took 0.5 to 2.8, where
// the dual simplex took up to 14; with twice as much the primal takes 5, with enough time 3 to 7.
constexpr double kFarTooMuch = 2.5;
constexpr int kPrimalPivotsARow = 3;

double inchesWithinReach(const PlanProblem &problem) {
  double inches = 0;
  for (const Order &order : problem.orders) {
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      inches += order.reach[period] == Reason::kMet ? order.demand[period] * order.width : 0;
    }
  }
  return inches;
}

// Of paper, at most, without trim.
double inchesOfMachines(const PlanProblem &problem) {
  std::vector<double> aDay(problem.machines.size(), 0.0);
  for (const Cutter &cutter : problem.cutters) {
    aDay[cutter.machine] = std::max(aDay[cutter.machine], cutter.capacity * cutter.deckleWidth);
  }
  double inches = 0;
  for (Index machine = 0; machine < problem.machines.size(); ++machine) {
    const std::vector<double> &days = problem.machines[machine].days;
    inches += aDay[machine] * std::accumulate(days.begin(), days.end(), 0.0);
  }
  return inches;
}

}  // namespace

LinearSolution solveFirst(const PlanProblem &problem, const CompactLp &lp, LinearSolver &solver) {
  if (inchesWithinReach(problem) > kFarTooMuch * inchesOfMachines(problem)) {
    solver.setBasis(lp.idleBasis());
    LinearSolution solution = solver.solve(Method::kPrimal, kPrimalPivotsARow);
    if (solution.status != Status::kStopped) {
      return solution;
    }
  }
  return solver.solveAfresh();
}

TwoSteps::TwoSteps(const PlanProblem &problem, const CompactLp &lp, LinearSolver &solver,
                   const SolveOptions &options)
    : problem_(problem), lp_(lp), solver_(solver), options_(options) {
  solver_.setTimeLimit(options.timeLimit);
}

LinearSolution TwoSteps::solve() {
  boundUnmet(false);
  setCosts(1.0, problem_.highestUndercost);
  LinearSolution solution = solveSum();
  if (solution.status == Status::kOptimal && !isNothing(unmetOf(solution))) {
    solution = firstStep();
  }
  if (solution.status == Status::kOptimal) {
    solution = secondStep(solution);
  }
  return solution.status == Status::kOptimal ? solver_.polish(solution) : solution;
}

LinearSolution TwoSteps::solveSum() {
  if (options_.basis != nullptr) {
    solver_.setBasis(*options_.basis);
    return solver_.solve(Method::kPrimal);
  }
  return options_.method ? solver_.solve(*options_.method) : solveFirst(problem_, lp_, solver_);
}

LinearSolution TwoSteps::firstStep() {
  setCosts(0.0, kWeightScale);
  LinearSolution solution = solver_.solve(Method::kPrimal);
  leastUnmet_ = std::max(solution.objective / kWeightScale, 0.0);
  if (isNothing(leastUnmet_)) {
    leastUnmet_ = 0.0;
  } else {
    unmetDual_ = solution.dual;
    for (double &dual : unmetDual_) {
      dual /= kWeightScale;
    }
  }
  return solution;
}

LinearSolution TwoSteps::secondStep(const LinearSolution &first) {
  setCosts(1.0, 0.0);
  if (leastUnmet_ == 0.0) {
    boundUnmet(true);
  } else {
    keepLeast(first);
  }
  return solver_.solve(Method::kPrimal);
}

// The solutions of the least unmet demand are those in which every column whose reduced cost is not
// 0, and every row whose dual value is not 0, stays at its bound (complementary slackness). Holding
// these leaves the second step nothing to trade, where a row with the sum would leave it the
// solver's tolerance: on mills with capacities of millions beside fractions that is worth a lot.
void TwoSteps::keepLeast(const LinearSolution &first) {
  for (int column = 0; column < lp_.model().columns(); ++column) {
    const auto at = static_cast<std::size_t>(column);
    if (std::fabs(first.reducedCost[at]) > kNothing) {
      solver_.setColumnBounds(column, first.primal[at], first.primal[at]);
    }
  }
  for (int row = 0; row < lp_.model().rows(); ++row) {
    const auto at = static_cast<std::size_t>(row);
    if (std::fabs(first.dual[at]) > kNothing) {
      solver_.setRowBounds(row, lp_.model().rowUpper[at], lp_.model().rowUpper[at]);
    }
  }
}

void TwoSteps::boundUnmet(bool fixed) {
  for (const int column : lp_.unmetColumns()) {
    solver_.setColumnBounds(column, 0.0,
                            fixed ? 0.0 : lp_.model().upper[static_cast<std::size_t>(column)]);
  }
}

void TwoSteps::setCosts(double costs, double shortage) {
  for (int column = 0; column < lp_.model().columns(); ++column) {
    solver_.setCost(column, costs * lp_.model().cost[static_cast<std::size_t>(column)]);
  }
  for (const int column : lp_.unmetColumns()) {
    solver_.setCost(column, shortage * lp_.unmetWeight(problem_, column));
  }
}

double TwoSteps::unmetOf(const LinearSolution &solution) const {
  double unmet = 0.0;
  for (const int column : lp_.unmetColumns()) {
    unmet += lp_.unmetWeight(problem_, column) * solution.primal[static_cast<std::size_t>(column)];
  }
  return unmet;
}

bool TwoSteps::isNothing(double unmet) const {
  return unmet <= kNothing * (1.0 + demandInReach());
}

double TwoSteps::demandInReach() const {
  double demand = 0.0;
  for (const int column : lp_.unmetColumns()) {
    demand += lp_.model().upper[static_cast<std::size_t>(column)];
  }
  return demand;
}

}  // namespace corvane::plan
