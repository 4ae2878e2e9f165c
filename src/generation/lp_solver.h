#pragma once

#include <QString>
#include <iosfwd>
#include <vector>

#include "generation/lp_columns.h"
#include "solver/callable_library.h"

namespace corvane {

// The solution of an LP, one value a column.
struct LpSolution {
  double objectiveValue = 0;
  std::vector<double> xValues;
  std::vector<double> reducedCosts;
};

// The LP solver as pattern generation uses it: one environment and one current problem. Every
// failure that is looked at ends the run with its words on standard output and in the log; nothing
// is cleaned up then, and the destructor does nothing either.
class LpSolver {
 public:
  // barrier chooses the barrier method with a primal crossover; otherwise the primal simplex.
  LpSolver(bool barrier, std::ostream &log) : barrier_(barrier), log_(log) {}

  void open();
  // Ends the environment and with it every problem that was not freed.
  void close();

  // Creates a problem of its own for the LP and loads it; what the solver answers to the load is
  // not looked at, since a fault shows in the solve.
  void create(const LpProblem &lp);

  // Solves to optimality, or ends the run. Grade and period are for the message.
  void solve(const QString &grade, const QString &period);

  // The dual values of all rows.
  std::vector<double> readDuals();

  // The values and reduced costs of all columns. They are filled with 0 first, and what the solver
  // answers is not looked at. The objective value is read before them.
  LpSolution readSolution();

  // Adds columns in one batch; column j ends where column j + 1 starts.
  void addColumns(const LpColumns &columns);

  // Frees the current problem.
  void freeProblem();

 private:
  bool barrier_;
  std::ostream &log_;
  CPXENVptr env_ = nullptr;
  CPXLPptr lp_ = nullptr;
  int rows_ = 0;
  int columns_ = 0;
};

}  // namespace corvane
