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

void LpSolver::create(const LpArrays &lp) {
  int status = 0;
  lp_ = CPXcreateprob(env_, &status, kProblemName);
  if (lp_ == nullptr) {
    endRun(log_, "Error: Could not create LP.");
  }
  rows_ = lp.rows();
  columns_ = lp.columns();
  CPXcopylp(env_, lp_, columns_, rows_, LpArrays::kMinimise, lp.objective.data(),
            lp.rightHandSides.data(), lp.senses.data(), lp.starts.data(), lp.counts.data(),
            lp.indices.data(), lp.values.data(), lp.lower.data(), lp.upper.data(), nullptr);
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

void LpSolver::readDuals(CheckedArray<double> &duals) {
  if (!duals.allocate(static_cast<std::size_t>(rows_), 0.0)) {
    endRun(log_, "Error: Could not allocate memory for dual values.");
  }
  const int code = CPXgetpi(env_, lp_, duals.data(), 0, rows_ - 1);
  if (code != 0) {
    endRun(log_, "Error: Could not get dual values from LP : " + std::to_string(code));
  }
}

void LpSolver::readSolution(CheckedArray<double> &xValues, CheckedArray<double> &reducedCosts,
                            double &objectiveValue) {
  CPXgetobjval(env_, lp_, &objectiveValue);
  const auto columns = static_cast<std::size_t>(columns_);
  if (!xValues.allocate(columns, 0.0)) {
    endRun(log_, "Error: Could not allocate memory for x values.");
  }
  CPXgetx(env_, lp_, xValues.data(), 0, columns_ - 1);
  if (!reducedCosts.allocate(columns, 0.0)) {
    endRun(log_, "Error: Could not allocate memory for reduced costs.");
  }
  CPXgetdj(env_, lp_, reducedCosts.data(), 0, columns_ - 1);
}

void LpSolver::addColumns(const LpArrays &columns) {
  const int nonzeros = static_cast<int>(columns.values.size());
  const int code = CPXaddcols(env_, lp_, columns.columns(), nonzeros, columns.objective.data(),
                              columns.starts.data(), columns.indices.data(), columns.values.data(),
                              columns.lower.data(), columns.upper.data(), nullptr);
  if (code != 0) {
    endRun(log_, "Error: Could not add columns to LP.");
  }
  columns_ += columns.columns();
}

void LpSolver::freeProblem() {
  if (CPXfreeprob(env_, &lp_) != 0) {
    endRun(log_, "Error: LP did not unload successfully.");
  }
}

}  // namespace corvane
