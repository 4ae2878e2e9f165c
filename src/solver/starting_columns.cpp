#include "solver/starting_columns.h"

#include <algorithm>
#include <cstddef>

namespace corvane::lp {

namespace {

constexpr int kSampleForEachRow = 2;
constexpr double kPromisingShareOfCost = 0.001;

// For each row the column of lowest cost per coefficient, the first among equals.
std::vector<int> cheapestOfRows(const LinearProgram &lp) {
  const ColumnPool &pool = lp.pool();
  std::vector<double> lowest(static_cast<std::size_t>(lp.rows()), kInfinity);
  std::vector<int> cheapest(static_cast<std::size_t>(lp.rows()), -1);
  for (int j = 0; j < lp.columns(); ++j) {
    const auto column = static_cast<std::size_t>(j);
    const auto end = static_cast<std::size_t>(pool.start[column + 1]);
    for (auto k = static_cast<std::size_t>(pool.start[column]); k < end; ++k) {
      const auto row = static_cast<std::size_t>(pool.row[k]);
      if (const double cost = pool.cost[column] / pool.value[k]; cost < lowest[row]) {
        lowest[row] = cost;
        cheapest[row] = j;
      }
    }
  }
  std::erase(cheapest, -1);
  return cheapest;
}

void keepEachOnce(std::vector<int> &columns) {
  std::sort(columns.begin(), columns.end());
  columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
}

}  // namespace

std::vector<int> startingColumns(const LinearProgram &lp, const std::vector<int> &promising) {
  std::vector<int> columns = cheapestOfRows(lp);
  const int stride = std::max(1, lp.columns() / std::max(1, kSampleForEachRow * lp.rows()));
  for (int j = 0; j < lp.columns(); j += stride) {
    columns.push_back(j);
  }
  columns.insert(columns.end(), promising.begin(), promising.end());
  keepEachOnce(columns);
  return columns;
}

std::vector<int> promisingColumns(const LinearProgram &lp, const std::vector<int> &held,
                                  const Answer &answer) {
  std::vector<int> columns;
  for (const auto &[column, value] : answer.activities) {
    columns.push_back(column);
  }
  for (const int column : held) {
    const double cost = lp.pool().cost[static_cast<std::size_t>(column)];
    if (reducedCost(lp.pool(), column, answer.duals.data()) < kPromisingShareOfCost * cost) {
      columns.push_back(column);
    }
  }
  keepEachOnce(columns);
  return columns;
}

}  // namespace corvane::lp
