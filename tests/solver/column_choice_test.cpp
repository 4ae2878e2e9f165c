#include "solver/column_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "solver/program_of.h"

namespace corvane::lp {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Columns with a coefficient of 1 in each of the rows named.
ColumnPool poolOf(const std::vector<std::vector<int>> &columns) {
  ColumnPool pool;
  for (const std::vector<int> &rows : columns) {
    pool.cost.push_back(1.0);
    pool.row.insert(pool.row.end(), rows.begin(), rows.end());
    pool.value.insert(pool.value.end(), rows.size(), 1.0);
    pool.start.push_back(static_cast<int>(pool.row.size()));
  }
  return pool;
}

TEST(LowestColumns, AreThoseOfLowestReducedCostInTheOrderOfThePool) {
  EXPECT_THAT(lowestColumns({{-1, 4}, {-3, 9}, {-2, 1}, {0, 2}}, 2), ElementsAre(1, 9));
}

TEST(LowestColumns, AreTheOlderOnesAmongEquals) {
  EXPECT_THAT(lowestColumns({{-1, 8}, {-1, 3}, {-1, 5}}, 2), ElementsAre(3, 5));
}

TEST(LowestColumns, AreAllWhereThereAreNoMore) {
  EXPECT_THAT(lowestColumns({{-1, 8}, {-2, 3}}, 2), ElementsAre(3, 8));
  EXPECT_THAT(lowestColumns({}, 2), IsEmpty());
  EXPECT_THAT(lowestColumns({{-1, 8}}, 0), IsEmpty());
}

TEST(ColumnsToMoveIn, HoldTheLowestOfEveryRow) {
  const ColumnPool pool = poolOf({{0}, {0}, {0}, {1}, {0, 1}});
  // Column 3 is the lowest of row 1, though 0 and 1 are lower.
  EXPECT_THAT(columnsToMoveIn(pool, 2, {{-5, 0}, {-4, 1}, {-3, 2}, {-2, 3}, {-1, 4}}, 2),
              ElementsAre(0, 3));
}

TEST(ColumnsToMoveIn, AreFilledUpWithTheLowest) {
  const ColumnPool pool = poolOf({{0}, {0}, {0}, {1}, {0, 1}});
  EXPECT_THAT(columnsToMoveIn(pool, 2, {{-3, 0}, {-5, 1}, {-4, 2}, {-2, 3}, {-1, 4}}, 3),
              ElementsAre(1, 2, 3));
}

TEST(ColumnsToMoveIn, MayServeSeveralRows) {
  const ColumnPool pool = poolOf({{0}, {1}, {0, 1}});
  EXPECT_THAT(columnsToMoveIn(pool, 2, {{-3, 0}, {-2, 1}, {-4, 2}}, 2), ElementsAre(0, 2));
}

TEST(ColumnsToMoveIn, AreAllWhereThereAreNoMore) {
  const ColumnPool pool = poolOf({{0}, {0}});
  EXPECT_THAT(columnsToMoveIn(pool, 1, {{-3, 1}, {-2, 0}}, 2), ElementsAre(0, 1));
  EXPECT_THAT(columnsToMoveIn(pool, 1, {}, 2), IsEmpty());
}

// The rule taken literally, on random columns.
TEST(ColumnsToMoveIn, AreWhatTheRuleNames) {
  std::mt19937 random(7);
  constexpr int kRows = 6;
  for (int round = 0; round < 2000; ++round) {
    std::vector<std::vector<int>> columns;
    std::vector<PricedColumn> candidates;
    for (int column = 0; column < 30; ++column) {
      std::set<int> rows;
      for (int entry = 0; entry < 3; ++entry) {
        rows.insert(static_cast<int>(random() % kRows));
      }
      columns.emplace_back(rows.begin(), rows.end());
      if (random() % 3 != 0) {
        candidates.push_back({-static_cast<double>(random() % 10), column});
      }
    }
    const std::size_t count = kRows + random() % 12;
    std::vector<PricedColumn> sorted = candidates;
    std::sort(sorted.begin(), sorted.end());
    std::set<int> expected;
    for (int row = 0; row < kRows && sorted.size() > count; ++row) {
      const auto lowest = std::find_if(sorted.begin(), sorted.end(), [&](const PricedColumn &c) {
        const auto &rows = columns[static_cast<std::size_t>(c.column)];
        return std::find(rows.begin(), rows.end(), row) != rows.end();
      });
      if (lowest != sorted.end()) {
        expected.insert(lowest->column);
      }
    }
    for (const PricedColumn &candidate : sorted) {
      if (expected.size() < count) {
        expected.insert(candidate.column);
      }
    }
    std::shuffle(candidates.begin(), candidates.end(), random);
    EXPECT_THAT(columnsToMoveIn(poolOf(columns), kRows, candidates, count),
                ::testing::ElementsAreArray(expected));
  }
}

// A program whose columns have these costs, and in each row these coefficients.
LinearProgram programOf(const std::vector<double> &costs,
                        const std::vector<std::vector<double>> &matrix) {
  const std::size_t columns = costs.size();
  return testing::programOf({.cost = costs,
                             .matrix = matrix,
                             .senses = std::string(matrix.size(), 'G'),
                             .rhs = std::vector<double>(matrix.size(), 1.0),
                             .lower = std::vector<double>(columns, 0.0),
                             .upper = std::vector<double>(columns, 1e20)});
}

// Two columns a row come from an even sample: with fifteen columns and three rows every other one.
TEST(StartingColumns, AreTheCheapestOfEveryRowASampleAndThePromising) {
  std::vector<double> costs(15, 9.0);
  std::vector<std::vector<double>> matrix(3, std::vector<double>(15, 0.0));
  // Per coefficient column 5 costs least in row 0 and, with the later 7, in row 1; no column serves
  // row 2.
  matrix[0][3] = 1;
  matrix[0][5] = 2;
  matrix[1][5] = 3;
  matrix[1][7] = 3;
  const LinearProgram lp = programOf(costs, matrix);
  EXPECT_THAT(startingColumns(lp, {}), ElementsAre(0, 2, 4, 5, 6, 8, 10, 12, 14));
  EXPECT_THAT(startingColumns(lp, {1, 4}), ElementsAre(0, 1, 2, 4, 5, 6, 8, 10, 12, 14));
}

TEST(StartingColumns, AreAllWhereThereAreFew) {
  const LinearProgram lp = programOf({1, 2, 3}, {{1, 1, 1}, {1, 1, 1}});
  EXPECT_THAT(startingColumns(lp, {}), ElementsAre(0, 1, 2));
}

TEST(PromisingColumns, AreThoseInUseAndThoseOfNearlyNoReducedCost) {
  const LinearProgram lp = programOf({10, 10, 10, 10}, {{1, 1, 1, 1}});
  // A dual value of 9.995 leaves each a reduced cost of half a thousandth of its cost.
  Solution solution{Status::kOptimal, {{3, 1.0}}, {9.995}};
  EXPECT_THAT(promisingColumns(lp, {0, 2}, solution), ElementsAre(0, 2, 3));
  solution.duals = {9.98};
  EXPECT_THAT(promisingColumns(lp, {0, 2}, solution), ElementsAre(3));
}

}  // namespace
}  // namespace corvane::lp
