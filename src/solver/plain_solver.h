#pragma once

#include <memory>

#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/working_lp.h"

namespace corvane::lp {

// Solves any linear program by handing all of it to CLP.
class PlainSolver {
 public:
  // kPrimal goes on from the basis of the last solve, with columns added since at a bound; kDual
  // starts afresh. There is no barrier here: CLP's ends the process on some programs that are not
  // covering programs. `lp` must be the same object at every call, and only grow.
  Solution solve(const LinearProgram &lp, Method method);

 private:
  void takeInColumns(const LinearProgram &lp);
  Status run(Method method);

  std::unique_ptr<WorkingLp> working_;
};

}  // namespace corvane::lp
