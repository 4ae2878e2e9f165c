#pragma once

#include <string>

#include "solver/answer.h"
#include "solver/linear_program.h"

namespace corvane::lp {

// Checks an optimal answer against the program itself, by what makes it optimal:
//   - x satisfies rows and bounds, and at most as many columns as there are rows stand between
//     their bounds (a vertex has no more);
//   - y and d = c - A'y have the signs that their rows and columns ask for;
//   - complementary slackness: where y_i or d_j is not 0, the row or column is at that bound;
//   - the objectives of x and y differ by at most 1e-9 of the sum of their terms' sizes.
// Returns the complaints, one a line, or nothing.
std::string checkOptimal(const LinearProgram &lp, const Answer &answer);

// c'x.
double objectiveValue(const LinearProgram &lp, const Answer &answer);

// Checks any answer: an optimal one as above; of the others, that CLP says the same of the whole
// program. For the debug switch: it costs more than the solve.
std::string checkAnswer(const LinearProgram &lp, const Answer &answer);

}  // namespace corvane::lp
