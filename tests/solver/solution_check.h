#pragma once

#include <string>

#include "solver/linear_program.h"
#include "solver/solution.h"

namespace corvane::lp::testing {

// Checks an optimal solution against the program itself, by what makes it optimal:
//   - x satisfies rows and bounds, and at most as many columns as there are rows stand between
//     their bounds (a vertex has no more);
//   - y and d = c - A'y have the signs that their rows and columns ask for;
//   - complementary slackness: where y_i or d_j is not 0, the row or column is at that bound;
//   - the objectives of x and y differ by at most 1e-9 of the sum of their terms' sizes.
// Returns the complaints, one a line, or nothing.
std::string checkOptimal(const LinearProgram &lp, const Solution &solution);

}  // namespace corvane::lp::testing
