#pragma once

#include <memory>

#include "solver/answer.h"
#include "solver/linear_program.h"
#include "solver/method.h"
#include "solver/plain_solver.h"
#include "solver/settings.h"
#include "solver/sifting.h"
#include "solver/starting_columns.h"

namespace corvane::lp {

// Solves one linear program again and again while it grows. Covering programs are sifted; all
// others, and those on which sifting fails, go to CLP whole.
class Solver {
 public:
  // `lp` must be the same object at every call, and only grow. `method` is kPrimal or kBarrier.
  // `known` may be of any matrix: it helps when it is this one. What CLP
  // throws comes through, and the next solve starts afresh.
  Answer solve(const LinearProgram &lp, Method method, const Settings &settings,
               const KnownMatrix &known);

  // Columns worth starting from when the matrix comes again; none unless the last solve was the
  // first, and sifted. `answer` is what it gave.
  std::vector<int> promising(const LinearProgram &lp, const Answer &answer) const;

 private:
  Answer solveOrThrow(const LinearProgram &lp, Method method, const Settings &settings,
                      const KnownMatrix &known);
  void startSifting(const LinearProgram &lp, const KnownMatrix &known);
  void takeInNewColumns(const LinearProgram &lp);
  Status sift(const LinearProgram &lp, Method method, const KnownMatrix &known);

  PlainSolver plain_;
  std::unique_ptr<Sifting> sifting_;
  std::vector<double> duals_;  // of the last optimum
  int seenColumns_ = 0;        // of the pool, at the last sifting
  int firstColumns_ = 0;       // of the pool, at the first sifting
};

}  // namespace corvane::lp
