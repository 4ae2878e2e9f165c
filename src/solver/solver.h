#pragma once

// The road of a linear program: trivial ones need no simplex, covering programs are sifted, and all
// others, and those on which sifting fails, go to CLP whole.

#include <memory>
#include <vector>

#include "solver/corner_choice.h"
#include "solver/linear_program.h"
#include "solver/plain_solver.h"
#include "solver/sifting.h"
#include "solver/solution.h"
#include "solver/thresholds.h"

namespace corvane::lp {

// For measurements: CLP over all columns whatever the program, with its warm primal simplex or its
// cold dual simplex.
enum class Plain { kOff, kPrimal, kDual };

// Solves one linear program again and again while it grows.
class Solver {
 public:
  explicit Solver(Plain plain = Plain::kOff, const Thresholds &thresholds = {})
      : mode_(plain), thresholds_(thresholds) {}

  // `lp` must be the same object at every call, and only grow. `method` is kPrimal or kBarrier.
  // `known` may be of any matrix: where it is this one, the solve is quicker and of several optima
  // another is chosen (corner_choice.h). What CLP throws comes through, and the next solve starts
  // afresh.
  Solution solve(const LinearProgram &lp, Method method, const KnownMatrix &known);

  // The end of a program: tells `known` what the last solve, which gave `solution`, showed of the
  // matrix, and moves the columns there. Nothing happens unless that was the first solve, sifted
  // and optimal. Running out of memory leaves `known` as it was.
  void remember(LinearProgram &lp, const Solution &solution, KnownMatrix &known);

 private:
  Solution solveOrThrow(const LinearProgram &lp, Method method, const KnownMatrix &known);
  void startSifting(const LinearProgram &lp, const KnownMatrix &known);
  void takeInNewColumns(const LinearProgram &lp);
  Status sift(const LinearProgram &lp, Method method, const KnownMatrix &known);

  Plain mode_;
  Thresholds thresholds_;
  PlainSolver plain_;
  std::unique_ptr<Sifting> sifting_;
  std::vector<double> duals_;  // of the last optimum
  int seenColumns_ = 0;        // of the pool, at the last sifting
  int firstColumns_ = 0;       // of the pool, at the first sifting
  bool isKnown_ = false;       // the matrix, at the first sifting
};

}  // namespace corvane::lp
