#include "solver/column_choice.h"

#include <algorithm>
#include <utility>

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

// Brings those of lowest reduced cost that serve a row in front; returns their number.
std::size_t bringLowestOfRowsInFront(const ColumnPool &pool, int rows,
                                     std::vector<PricedColumn> &candidates) {
  constexpr auto kNone = static_cast<std::size_t>(-1);
  std::vector<std::size_t> lowest(static_cast<std::size_t>(rows), kNone);
  for (std::size_t at = 0; at < candidates.size(); ++at) {
    const auto column = static_cast<std::size_t>(candidates[at].column);
    const auto end = static_cast<std::size_t>(pool.start[column + 1]);
    for (auto k = static_cast<std::size_t>(pool.start[column]); k < end; ++k) {
      std::size_t &known = lowest[static_cast<std::size_t>(pool.row[k])];
      if (known == kNone || candidates[at] < candidates[known]) {
        known = at;
      }
    }
  }
  std::erase(lowest, kNone);
  std::sort(lowest.begin(), lowest.end());
  lowest.erase(std::unique(lowest.begin(), lowest.end()), lowest.end());
  // Their places ascend, so none is taken before its turn.
  for (std::size_t place = 0; place < lowest.size(); ++place) {
    std::swap(candidates[place], candidates[lowest[place]]);
  }
  return lowest.size();
}

std::vector<int> ascending(const std::vector<PricedColumn> &candidates) {
  std::vector<int> columns;
  columns.reserve(candidates.size());
  for (const PricedColumn &candidate : candidates) {
    columns.push_back(candidate.column);
  }
  std::sort(columns.begin(), columns.end());
  return columns;
}

// Keeps the first `fixed` candidates and the lowest behind them, `count` in all.
void keepLowest(std::vector<PricedColumn> &candidates, std::size_t fixed, std::size_t count) {
  if (candidates.size() <= count) {
    return;
  }
  std::nth_element(candidates.begin() + static_cast<std::ptrdiff_t>(fixed),
                   candidates.begin() + static_cast<std::ptrdiff_t>(count), candidates.end());
  candidates.resize(count);
}

}  // namespace

std::vector<int> lowestColumns(std::vector<PricedColumn> candidates, std::size_t count) {
  keepLowest(candidates, 0, count);
  return ascending(candidates);
}

std::vector<int> columnsToMoveIn(const ColumnPool &pool, int rows,
                                 std::vector<PricedColumn> candidates, std::size_t count) {
  if (candidates.size() > count) {
    keepLowest(candidates, bringLowestOfRowsInFront(pool, rows, candidates), count);
  }
  return ascending(candidates);
}

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
                                  const Solution &solution) {
  std::vector<int> columns;
  for (const auto &[column, value] : solution.activities) {
    columns.push_back(column);
  }
  for (const int column : held) {
    const double cost = lp.pool().cost[static_cast<std::size_t>(column)];
    if (reducedCost(lp.pool(), column, solution.duals.data()) < kPromisingShareOfCost * cost) {
      columns.push_back(column);
    }
  }
  keepEachOnce(columns);
  return columns;
}

}  // namespace corvane::lp
