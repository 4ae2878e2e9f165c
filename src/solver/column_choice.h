#pragma once

// Which columns of a pool to give to CLP, by their reduced costs.

#include <cstddef>
#include <tuple>
#include <vector>

#include "solver/linear_program.h"

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
// REQUIRES a count of at least `rows`.
std::vector<int> columnsToMoveIn(const ColumnPool &pool, int rows,
                                 std::vector<PricedColumn> candidates, std::size_t count);

}  // namespace corvane::lp
