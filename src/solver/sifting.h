#pragma once

// Sifting: CLP holds a working set of the columns; the others wait in the pool.
//
//   solve the working set; y = its duals
//   price every column of the pool outside it: d_j = c_j - A_j'y
//   none below zero: the working set's optimum is that of the whole program
//   otherwise move the most negative ones in and repeat
//
// With many more columns than rows this beats handing CLP all of them, since a primal simplex
// updates reduced costs and weights of every column it holds in every iteration. (Bixby, Gregory,
// Lustig, Marsten and Shanno, "Very large-scale linear programming", Operations Research 40,
// 1992.)

#include <memory>
#include <vector>

#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/thresholds.h"
#include "solver/working_lp.h"

namespace corvane::lp {

// Of an optimum of a covering program the objective of the columns is that of the rows' duals, and
// nowhere else. CLP now and then stops with traces of its perturbation in either.
bool objectivesAgree(const LinearProgram &lp, const Solution &solution);

class Sifting {
 public:
  // Starts with the given columns at the slack basis. `lp` must outlive it and only grow.
  Sifting(const LinearProgram &lp, const std::vector<int> &columns, const Thresholds &thresholds);

  // Moves the columns from `begin` on, which the pool has gained, in at once.
  void takeInFrom(int begin);

  // To the optimum of the whole program. `first` solves the working set the first time; after
  // that, and with kPrimal from the start, a warm primal simplex does. A status other than
  // kOptimal says that this did not work out, and nothing about the program.
  Status optimise(Method first);

  // Prices the pool with the duals of the last optimum and moves the most negative columns in.
  // False when there are none.
  bool moveInViolated(const std::vector<double> &duals);

  // Keeps the working set small: beyond the threshold's columns a row, the non-basic ones of
  // highest reduced cost leave until so many are left as it says. The basis stays.
  void dropSurplus(const std::vector<double> &duals);

  // Of the last optimise(), which must have ended with kOptimal.
  const Solution &solution() const { return solution_; }

  const WorkingLp &working() const { return *working_; }

 private:
  Status solveWorkingSet(Method method);
  Status sift(Method first);
  void moveIn(const std::vector<int> &columns);
  void rebuild(const std::vector<int> &columns);
  void rebuildAtBasis(const std::vector<int> &basic, const std::vector<int> &others);

  const LinearProgram &lp_;
  Thresholds thresholds_;
  std::unique_ptr<WorkingLp> working_;
  Solution solution_;
  std::vector<char> isIn_;  // for each column of the pool, as far as it has been looked at
};

}  // namespace corvane::lp
