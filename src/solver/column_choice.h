#pragma once

// Which columns of a pool to give to CLP.

#include <cstddef>
#include <tuple>
#include <vector>

#include "solver/linear_program.h"
#include "solver/solution.h"

namespace corvane::lp {

struct PricedColumn {
  double reducedCost;
  int column;

  // By reduced cost, then by age: the order does not depend on the sorting algorithm.
  bool operator<(const PricedColumn &other) const {
    return std::tie(reducedCost, column) < std::tie(other.reducedCost, other.column);
  }
};

// The `count` columns of lowest reduced cost, or all if there are fewer, ascending.
std::vector<int> lowestColumns(std::vector<PricedColumn> candidates, std::size_t count);

// Of columns that would improve the LP, `count` or all if there are fewer, ascending: for every row
// the one of lowest reduced cost that has a coefficient there, and then the lowest of the others.
// The lowest alone are much alike; together they would improve little more than one of them does.
// (That gains 5 to 10 % where an iteration brings 1000 patterns, and nothing with 100.)
// REQUIRES a count of at least `rows`.
std::vector<int> columnsToMoveIn(const ColumnPool &pool, int rows,
                                 std::vector<PricedColumn> candidates, std::size_t count);

// The columns with which sifting starts on a covering program that it has no basis of: for each
// row the one of lowest cost per coefficient, so that the working set has a solution whenever the
// program has; an even sample of 2 columns a row, which saves no time but leads to better optima of
// small programs; and `promising`, which saves final LPs a fourth to a half. Ascending, each once.
std::vector<int> startingColumns(const LinearProgram &lp, const std::vector<int> &promising);

// Of the columns `held` in the working set, those in use and those whose reduced cost is below
// 0.1 % of their cost: likely to be of use with other right-hand sides. Ascending.
std::vector<int> promisingColumns(const LinearProgram &lp, const std::vector<int> &held,
                                  const Solution &solution);

}  // namespace corvane::lp
