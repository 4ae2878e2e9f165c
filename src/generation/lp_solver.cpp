#include "generation/lp_solver.h"

#include <ostream>
#include <string>

#include "core/fatal.h"
#include "core/text.h"

namespace corvane {

namespace {

constexpr int kOptimal = 1;
constexpr char kProblemName[] = "selectPatterns";

std::string noSolution(int code, const QString &grade, const QString &period, int status) {
  return "Error: No solution to lp, status : " + std::to_string(code) + "\nGrade : " + utf8(grade) +
         "\nPeriod : " + utf8(period) +
         "\nError: Solution not optimal, status : " + std::to_string(status);
}

}  // namespace

void LpSolver::open() {
  int status = 0;
  env_ = CPXopenCPLEXruntime(&status, 0, nullptr);
  if (status != 0 || env_ == nullptr) {
    endRun(log_, "Error: Could not open cplex.");
  }
}

void LpSolver::close() {
  if (CPXcloseCPLEX(&env_) != 0) {
    endRun(log_, "Error: Could not close cplex.");
  }
}

void LpSolver::create(const LpProblem &lp) {
  int status = 0;
  lp_ = CPXcreateprob(env_, &status, kProblemName);
  if (lp_ == nullptr) {
    endRun(log_, "Error: Could not create LP.");
  }
  rows_ = lp.rows();
  columns_ = lp.columns.count();
  const LpColumns &columns = lp.columns;
  CPXcopylp(env_, lp_, columns_, rows_, LpProblem::kMinimise, columns.objective.data(),
            lp.rightHandSides.data(), lp.senses.data(), columns.starts.data(),
            columns.counts.data(), columns.indices.data(), columns.values.data(),
            columns.lower.data(), columns.upper.data(), nullptr);
}

void LpSolver::solve(const QString &grade, const QString &period) {
  const int code = barrier_ ? CPXhybbaropt(env_, lp_, 'p') : CPXprimopt(env_, lp_);
  const int status = CPXgetstat(env_, lp_);
  if (code != 0) {
    endRun(log_, noSolution(code, grade, period, status));
  }
  if (status != kOptimal) {
    endRun(log_, "Error: Solution not optimal.");
  }
}

std::vector<double> LpSolver::readDuals() {
  std::vector<double> duals;
  takeMemory("dual values", log_, [&] { duals.assign(static_cast<std::size_t>(rows_), 0.0); });
  const int code = CPXgetpi(env_, lp_, duals.data(), 0, rows_ - 1);
  if (code != 0) {
    endRun(log_, "Error: Could not get dual values from LP : " + std::to_string(code));
  }
  return duals;
}

LpSolution LpSolver::readSolution() {
  LpSolution solution;
  const auto columns = static_cast<std::size_t>(columns_);
  CPXgetobjval(env_, lp_, &solution.objectiveValue);
  takeMemory("x values", log_, [&] { solution.xValues.assign(columns, 0.0); });
  CPXgetx(env_, lp_, solution.xValues.data(), 0, columns_ - 1);
  takeMemory("reduced costs", log_, [&] { solution.reducedCosts.assign(columns, 0.0); });
  CPXgetdj(env_, lp_, solution.reducedCosts.data(), 0, columns_ - 1);
  return solution;
}

void LpSolver::addColumns(const LpColumns &columns) {
  const int code =
      CPXaddcols(env_, lp_, columns.count(), columns.nonzeros(), columns.objective.data(),
                 columns.starts.data(), columns.indices.data(), columns.values.data(),
                 columns.lower.data(), columns.upper.data(), nullptr);
  if (code != 0) {
    endRun(log_, "Error: Could not add columns to LP.");
  }
  columns_ += columns.count();
}

void LpSolver::freeProblem() {
  if (CPXfreeprob(env_, &lp_) != 0) {
    endRun(log_, "Error: LP did not unload successfully.");
  }
}

}  // namespace corvane
