// Of several optima another is chosen for each of the LPs of one matrix, and each is an optimum.

#include "solver/corner_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "solver/program_of.h"
#include "solver/solution_check.h"
#include "solver/solver.h"

namespace corvane::lp::testing {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Pair;

// Rows 0 and 1 can be served by columns of cost 2 together (0) or apart (1 and 2, cost 1 each):
// every mix that covers the demands is optimal. Column 3 never is.
TestLp mixes(double first, double second) {
  return {.cost = {2, 1, 1, 9},
          .matrix = {{1, 1, 0, 1}, {1, 0, 1, 1}},
          .senses = "GG",
          .rhs = {first, second},
          .lower = {0, 0, 0, 0},
          .upper = {1e20, 1e20, 1e20, 1e20}};
}

std::set<int> columnsOf(const Activities &activities) {
  std::set<int> columns;
  for (const auto &[column, x] : activities) {
    columns.insert(column);
  }
  return columns;
}

// Solves the LP as one that comes after those that `known` knows, checks it and tells `known`.
Solution solveNext(const TestLp &lp, KnownMatrix &known) {
  LinearProgram program = programOf(lp);
  Solver solver;
  const Solution solution = solver.solve(program, Method::kPrimal, known);
  EXPECT_EQ(checkOptimal(program, solution), "");
  solver.remember(program, solution, known);
  return solution;
}

TEST(CornerChoice, MovesToColumnsThatHaveServedLess) {
  KnownMatrix known;
  const Solution first = solveNext(mixes(3, 3), known);
  const Solution second = solveNext(mixes(4, 4), known);
  EXPECT_NE(columnsOf(first.activities), columnsOf(second.activities));
  EXPECT_EQ(objectiveValue(programOf(mixes(4, 4)), second.activities), 8.0);
}

TEST(CornerChoice, LeavesTheOnlyOptimumAlone) {
  KnownMatrix known;
  const TestLp lp{.cost = {2, 3, 9},
                  .matrix = {{1, 1, 1}, {1, 3, 1}},
                  .senses = "GG",
                  .rhs = {4, 6},
                  .lower = {0, 0, 0},
                  .upper = {1e20, 1e20, 1e20}};
  for (int turn = 0; turn < 3; ++turn) {
    EXPECT_THAT(solveNext(lp, known).activities,
                ElementsAre(Pair(0, DoubleNear(3.0, 1e-9)), Pair(1, DoubleNear(1.0, 1e-9))));
  }
}

TEST(CornerChoice, LeavesARowWithAPriceAtItsDemand) {
  // Column 1 serves twice what is demanded at the cost of column 0: no optimum holds column 0.
  KnownMatrix known;
  const TestLp lp{.cost = {1, 1},
                  .matrix = {{1, 2}},
                  .senses = "G",
                  .rhs = {6},
                  .lower = {0, 0},
                  .upper = {1e20, 1e20}};
  for (int turn = 0; turn < 4; ++turn) {
    EXPECT_THAT(solveNext(lp, known).activities, ElementsAre(Pair(1, DoubleNear(3.0, 1e-9))));
  }
}

TEST(CornerChoice, TheSameCallsGiveTheSameChoice) {
  KnownMatrix one;
  KnownMatrix other;
  for (int turn = 0; turn < 6; ++turn) {
    const TestLp lp = mixes(3 + turn, 4);
    EXPECT_EQ(solveNext(lp, one).activities, solveNext(lp, other).activities);
  }
}

TEST(CornerChoice, CountsWhatSolutionsHold) {
  KnownMatrix known{
      .pool = programOf(mixes(1, 1)).releasePool(), .promising = {}, .uses = {0, 0, 0, 0}};
  countUses(known, {{0, 1.5}, {2, 3.0}});
  countUses(known, {{2, 1.0}});
  EXPECT_THAT(known.uses, ElementsAre(1, 0, 2, 0));
  EXPECT_EQ(known.solutions, 2);
}

TEST(CornerChoice, AnotherMatrixStartsTheCountAgain) {
  KnownMatrix known;
  solveNext(mixes(3, 3), known);
  solveNext(mixes(3, 3), known);
  EXPECT_EQ(known.solutions, 2);
  TestLp other = mixes(3, 3);
  other.cost[3] = 8;
  solveNext(other, known);
  EXPECT_EQ(known.solutions, 1);
}

TEST(CornerChoice, AProgramThatGrewIsNotRemembered) {
  KnownMatrix known;
  solveNext(mixes(3, 3), known);
  LinearProgram program = programOf({.cost = {9},
                                     .matrix = {{1}, {1}},
                                     .senses = "GG",
                                     .rhs = {3, 3},
                                     .lower = {0},
                                     .upper = {1e20}});
  Solver solver;
  solver.solve(program, Method::kPrimal, known);
  ASSERT_TRUE(append(program, mixes(3, 3)));
  const Solution solution = solver.solve(program, Method::kPrimal, known);
  EXPECT_EQ(checkOptimal(program, solution), "");
  solver.remember(program, solution, known);
  EXPECT_EQ(known.pool, programOf(mixes(3, 3)).pool());
}

}  // namespace
}  // namespace corvane::lp::testing
