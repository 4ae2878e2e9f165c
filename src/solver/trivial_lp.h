#pragma once

#include <optional>

#include "solver/linear_program.h"
#include "solver/solution.h"

namespace corvane::lp {

// The solution of a program that needs no simplex:
//   - one whose bounds cross, or with a row that asks for infinity: infeasible;
//   - a covering program with a demanded row that no column covers: infeasible, and the only way
//     in which a covering program can fail to have an optimum;
//   - a covering program that demands nothing, as those of a period without orders do: x = 0 is
//     optimal and every dual is 0, so that no pattern prices out;
//   - one without rows, columns or coefficients: each column at its cheapest bound.
// Nothing for any other program.
std::optional<Solution> solveTrivial(const LinearProgram &lp);

}  // namespace corvane::lp
