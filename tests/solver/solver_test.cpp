#include "solver/solver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "solver/program_of.h"
#include "solver/solution_check.h"

namespace corvane::lp::testing {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

// A column for each of three rows, and then one that serves all of them at less.
TestLp covering(int columns = 4) {
  TestLp lp{.cost = {1, 1, 1, 2},
            .matrix = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}},
            .senses = "GGG",
            .rhs = {4, 5, 6},
            .lower = {0, 0, 0, 0},
            .upper = std::vector<double>(4, 1e20)};
  lp.cost.resize(static_cast<std::size_t>(columns));
  for (std::vector<double> &row : lp.matrix) {
    row.resize(static_cast<std::size_t>(columns));
  }
  return lp;
}

// What it costs at best: 4 of the last column, and the rest of each row.
constexpr double kLeastCost = 4 * 2 + 1 + 2;

void expectLeastCost(const LinearProgram &lp, const Solution &solution) {
  ASSERT_EQ(solution.status, Status::kOptimal);
  EXPECT_EQ(checkOptimal(lp, solution), "");
  EXPECT_NEAR(objectiveValue(lp, solution.activities), kLeastCost, 1e-9);
}

TEST(Solver, AnswersATrivialProgramWithoutSifting) {
  TestLp test = covering();
  test.rhs = {0, 0, 0};
  LinearProgram lp = programOf(test);
  Solver solver;
  KnownMatrix known;
  const Solution solution = solver.solve(lp, Method::kPrimal, known);
  EXPECT_EQ(solution.status, Status::kOptimal);
  EXPECT_THAT(solution.activities, IsEmpty());
  EXPECT_THAT(solution.duals, ElementsAre(0, 0, 0));
  solver.remember(lp, solution, known);
  EXPECT_EQ(known.solutions, 0);
  EXPECT_EQ(lp.columns(), 4) << "nothing was moved out";
}

TEST(Solver, SiftsACoveringProgramByEitherMethod) {
  for (const Method method : {Method::kPrimal, Method::kBarrier}) {
    LinearProgram lp = programOf(covering());
    Solver solver;
    KnownMatrix known;
    const Solution solution = solver.solve(lp, method, known);
    expectLeastCost(lp, solution);
    solver.remember(lp, solution, known);
    EXPECT_EQ(known.solutions, 1) << "it was sifted";
    EXPECT_EQ(known.pool, programOf(covering()).pool());
    EXPECT_THAT(known.uses, ElementsAre(0, 1, 1, 1));
    EXPECT_THAT(known.promising, ElementsAre(1, 2, 3));
  }
}

// Columns of one cost that serve every pair of rows: such a program has many optima, and barrier
// ends at others than a simplex.
TEST(Solver, TakesTheMethodThatIsAskedFor) {
  TestLp test{.senses = "GGGGGG", .rhs = {3, 5, 7, 11, 13, 17}};
  test.matrix.resize(6);
  for (std::size_t one = 0; one < 6; ++one) {
    for (std::size_t other = 0; other < one; ++other) {
      test.cost.push_back(1);
      test.lower.push_back(0);
      test.upper.push_back(1e20);
      for (std::size_t row = 0; row < 6; ++row) {
        test.matrix[row].push_back(row == one || row == other ? 1 : 0);
      }
    }
  }
  const LinearProgram lp = programOf(test);
  const Solution bySimplex = Solver().solve(lp, Method::kPrimal, {});
  const Solution byBarrier = Solver().solve(lp, Method::kBarrier, {});
  EXPECT_EQ(checkOptimal(lp, byBarrier), "");
  EXPECT_NE(bySimplex.activities, byBarrier.activities);
  WorkingLp barrier(lp, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14});
  ASSERT_EQ(barrier.barrier(), Status::kOptimal);
  EXPECT_EQ(byBarrier.activities, barrier.activities());
}

TEST(Solver, HandsAnyOtherProgramToClpWhole) {
  TestLp test = covering();
  test.upper[3] = 3;
  LinearProgram lp = programOf(test);
  Solver solver;
  KnownMatrix known;
  const Solution solution = solver.solve(lp, Method::kPrimal, known);
  ASSERT_EQ(solution.status, Status::kOptimal);
  EXPECT_EQ(checkOptimal(lp, solution), "");
  EXPECT_NEAR(objectiveValue(lp, solution.activities), 3 * 2 + 1 + 2 + 3, 1e-9);
  solver.remember(lp, solution, known);
  EXPECT_EQ(known.solutions, 0);
}

TEST(Solver, HandsOnWhatSiftingCannotSettle) {
  // What the second column is needed for is less than counts as use, and it alone costs: the
  // objectives of columns and duals cannot agree.
  LinearProgram lp = programOf({.cost = {0, 1},
                                .matrix = {{1, 0}, {0, 1e5}},
                                .senses = "GG",
                                .rhs = {1, 1e-5},
                                .lower = {0, 0},
                                .upper = {1e20, 1e20}});
  ASSERT_TRUE(lp.isCovering());
  Solver solver;
  KnownMatrix known;
  const Solution solution = solver.solve(lp, Method::kPrimal, known);
  ASSERT_EQ(solution.status, Status::kOptimal);
  EXPECT_THAT(solution.activities, ElementsAre(Pair(0, DoubleNear(1, 1e-9))));
  solver.remember(lp, solution, known);
  EXPECT_EQ(known.solutions, 0) << "the answer is the plain simplex's";
}

TEST(Solver, InAPlainModeSiftsNothing) {
  for (const Plain plain : {Plain::kPrimal, Plain::kDual}) {
    LinearProgram lp = programOf(covering());
    Solver solver(plain);
    KnownMatrix known;
    const Solution solution = solver.solve(lp, Method::kPrimal, known);
    expectLeastCost(lp, solution);
    solver.remember(lp, solution, known);
    EXPECT_EQ(known.solutions, 0);
  }
}

// However the new column comes into the working set.
TEST(Solver, GoesOnWhereColumnsWereAdded) {
  const std::vector<Thresholds> ways = {
      {},
      {.smallRows = 0, .smallestRows = 0, .surplusPerRow = 0, .keptPerRow = 0},
      {.smallBatch = 0},
      {.smallBatch = 0, .surplusPerRow = 0, .keptPerRow = 0},
      {.wholePerRow = 0, .smallRows = 0, .leastMovedIn = 1}};
  for (const Thresholds &way : ways) {
    LinearProgram lp = programOf(covering(3));
    Solver solver(Plain::kOff, way);
    const Solution first = solver.solve(lp, Method::kPrimal, {});
    ASSERT_EQ(first.status, Status::kOptimal);
    EXPECT_THAT(first.activities,
                ElementsAre(Pair(0, DoubleNear(4, 1e-9)), Pair(1, DoubleNear(5, 1e-9)),
                            Pair(2, DoubleNear(6, 1e-9))));
    ASSERT_TRUE(append(lp, covering(), 3));
    expectLeastCost(lp, solver.solve(lp, Method::kPrimal, {}));
    expectLeastCost(lp, solver.solve(lp, Method::kBarrier, {}));
  }
}

// What is known of a matrix tells nothing of one with more columns.
TEST(Solver, GoesOnWhereColumnsWereAddedToAKnownMatrix) {
  KnownMatrix known;
  LinearProgram before = programOf(covering(3));
  Solver first;
  first.remember(before, first.solve(before, Method::kPrimal, known), known);
  ASSERT_EQ(known.solutions, 1);
  LinearProgram lp = programOf(covering(3));
  Solver solver;
  ASSERT_EQ(solver.solve(lp, Method::kPrimal, known).status, Status::kOptimal);
  ASSERT_TRUE(append(lp, covering(), 3));
  expectLeastCost(lp, solver.solve(lp, Method::kPrimal, known));
}

TEST(Solver, RemembersNothingOfAProgramThatGrew) {
  LinearProgram lp = programOf(covering(3));
  Solver solver;
  KnownMatrix known;
  solver.solve(lp, Method::kPrimal, known);
  ASSERT_TRUE(append(lp, covering(), 3));
  const Solution solution = solver.solve(lp, Method::kPrimal, known);
  solver.remember(lp, solution, known);
  EXPECT_EQ(known.solutions, 0);
  EXPECT_EQ(known.pool.size(), 0);
  EXPECT_EQ(lp.columns(), 4);
}

TEST(Solver, RemembersNothingOfAFailure) {
  LinearProgram lp = programOf(covering());
  Solver solver;
  KnownMatrix known;
  solver.solve(lp, Method::kPrimal, known);
  solver.remember(lp, {Status::kOther, {}, {}}, known);
  EXPECT_EQ(known.solutions, 0);
  EXPECT_EQ(lp.columns(), 4);
}

TEST(Solver, CountsTheSolutionsOfAMatrixThatComesAgain) {
  KnownMatrix known;
  for (int turn = 1; turn <= 3; ++turn) {
    TestLp test = covering();
    test.rhs = {4, 4.0 + turn, 4};
    LinearProgram lp = programOf(test);
    Solver solver(Plain::kOff, {.wholeKnownPerRow = 0});
    const Solution solution = solver.solve(lp, Method::kPrimal, known);
    ASSERT_EQ(solution.status, Status::kOptimal);
    EXPECT_EQ(checkOptimal(lp, solution), "");
    solver.remember(lp, solution, known);
    EXPECT_EQ(known.solutions, turn);
    EXPECT_THAT(known.uses, ElementsAre(0, turn, 0, turn));
  }
}

TEST(Solver, ForgetsAMatrixWhenAnotherComes) {
  KnownMatrix known;
  for (const double cost : {2.0, 2.5}) {
    TestLp test = covering();
    test.cost[3] = cost;
    LinearProgram lp = programOf(test);
    Solver solver;
    const Solution solution = solver.solve(lp, Method::kPrimal, known);
    solver.remember(lp, solution, known);
    EXPECT_EQ(known.solutions, 1);
    EXPECT_THAT(known.uses, ElementsAre(0, 1, 1, 1));
    EXPECT_EQ(known.pool.cost[3], cost);
  }
}

TEST(Solver, TellsWhatHasNoOptimum) {
  LinearProgram unbounded = programOf({.cost = {-1, 0},
                                       .matrix = {{1, 1}},
                                       .senses = "G",
                                       .rhs = {1},
                                       .lower = {0, 0},
                                       .upper = {1e20, 1e20}});
  EXPECT_EQ(Solver().solve(unbounded, Method::kPrimal, {}).status, Status::kUnbounded);
  LinearProgram infeasible = programOf({.cost = {1},
                                        .matrix = {{1}, {1}},
                                        .senses = "GL",
                                        .rhs = {2, 1},
                                        .lower = {0},
                                        .upper = {1e20}});
  EXPECT_EQ(Solver().solve(infeasible, Method::kPrimal, {}).status, Status::kInfeasible);
}

}  // namespace
}  // namespace corvane::lp::testing
