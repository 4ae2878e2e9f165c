#pragma once

#include <vector>

#include "solver/answer.h"
#include "solver/linear_program.h"

namespace corvane::lp {

// What is known of a matrix from the last time it was solved, with other right-hand sides.
struct KnownMatrix {
  ColumnPool pool;
  std::vector<int> promising;  // columns, ascending
};

// The columns with which sifting starts on a covering program that it has no basis of: for each
// row the one of lowest cost per coefficient, so that the working set has a solution whenever the
// program has; an even sample of 2 columns a row; and `promising`. Ascending, each once.
std::vector<int> startingColumns(const LinearProgram &lp, const std::vector<int> &promising);

// Of the columns `held` in the working set, those in use and those whose reduced cost is below
// 0.1 % of their cost: likely to be of use with other right-hand sides. Ascending.
std::vector<int> promisingColumns(const LinearProgram &lp, const std::vector<int> &held,
                                  const Answer &answer);

}  // namespace corvane::lp
