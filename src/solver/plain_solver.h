#pragma once

#include <memory>

#include "solver/answer.h"
#include "solver/linear_program.h"
#include "solver/working_lp.h"

namespace corvane::lp {

enum class Method { kPrimal, kDual, kBarrier };

// Solves any linear program by handing all of it to CLP.
class PlainSolver {
 public:
  // Primal goes on from the basis of the last solve, with columns added since at a bound; the
  // others start afresh. `lp` must be the same object at every call, and only grow.
  Answer solve(const LinearProgram &lp, Method method);

 private:
  void take_in_columns(const LinearProgram &lp);

  std::unique_ptr<WorkingLp> working_;
};

}  // namespace corvane::lp
