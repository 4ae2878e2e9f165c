#include "plan/whole_solver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace corvane::plan {

namespace {

using testing::ElementsAre;

// Two patterns of 3 and 5 rolls at 2 and 3 money for at least `rolls`.
LinearModel coverProgram(double rolls) {
  LinearModel program;
  const int row = program.addRow(rolls, kInfinite);
  program.addColumn(2, 0, kInfinite, {{{row, 3.0}}});
  program.addColumn(3, 0, kInfinite, {{{row, 5.0}}});
  program.whole = {1, 1};
  return program;
}

// A cover of many rows that no search ends within a few nodes.
LinearModel hardProgram() {
  std::mt19937 random(3);
  LinearModel program;
  for (int row = 0; row < 21; ++row) {
    program.addRow(1 + static_cast<double>(random() % 20), kInfinite);
  }
  for (int column = 0; column < 60; ++column) {
    std::vector<Entry> entries;
    for (int entry = 0; entry < 3; ++entry) {
      entries.push_back(
          {static_cast<int>(random() % 7) + 7 * entry, 1 + static_cast<double>(random() % 4)});
    }
    program.addColumn(1 + static_cast<double>(random() % 100) / 1000, 0, kInfinite, entries);
  }
  program.whole.assign(60, 1);
  return program;
}

TEST(SolveWhole, FindsTheCheapestWholeSolution) {
  const WholeAnswer solution = solveWhole(coverProgram(14), {});
  ASSERT_TRUE(solution.isFound);
  EXPECT_THAT(solution.values, ElementsAre(0, 3));
  EXPECT_NEAR(solution.cost, 9, 1e-9);
  EXPECT_TRUE(solution.isOptimal);
}

TEST(SolveWhole, LeavesOtherColumnsFractional) {
  LinearModel program = coverProgram(14);
  program.whole = {1, 0};
  EXPECT_NEAR(solveWhole(program, {}).cost, 14 * 3 / 5.0, 1e-9);
}

TEST(SolveWhole, CountsOnlyWhatCostsLessThanTheCutoff) {
  const WholeAnswer none = solveWhole(coverProgram(14), {.cutoff = 8.9});
  EXPECT_FALSE(none.isFound);
  EXPECT_TRUE(none.isOptimal);
  EXPECT_TRUE(solveWhole(coverProgram(14), {.cutoff = 9.1}).isFound);
}

TEST(SolveWhole, IsNothingWhereThereIsNoSolution) {
  LinearModel program = coverProgram(14);
  program.upper = {1, 1};
  EXPECT_FALSE(solveWhole(program, {}).isFound);
}

TEST(SolveWhole, EndsAtItsNodesAndIsTheSameAgain) {
  const WholeAnswer once = solveWhole(hardProgram(), {.nodes = 50});
  const WholeAnswer again = solveWhole(hardProgram(), {.nodes = 50});
  ASSERT_TRUE(once.isFound);
  EXPECT_FALSE(once.isOptimal);
  EXPECT_EQ(once.values, again.values);
}

TEST(SolveWhole, SaysNothing) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  solveWhole(hardProgram(), {.nodes = 50});
  solveWhole(coverProgram(14), {.cutoff = 8});
  LinearModel impossible = coverProgram(14);
  impossible.upper = {1, 1};
  solveWhole(impossible, {});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace

}  // namespace corvane::plan
