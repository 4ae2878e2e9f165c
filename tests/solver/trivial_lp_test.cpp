#include "solver/trivial_lp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "solver/program_of.h"

namespace corvane::lp::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TestLp covering(std::vector<double> rhs) {
  return {.cost = {2, 3},
          .matrix = {{1, 0}, {0, 0}},
          .senses = "GG",
          .rhs = std::move(rhs),
          .lower = {0, 0},
          .upper = {1e20, 1e20}};
}

TEST(TrivialLp, NothingDemandedIsNothingDone) {
  const auto solution = solveTrivial(programOf(covering({0, -3})));
  ASSERT_TRUE(solution);
  EXPECT_EQ(solution->status, Status::kOptimal);
  EXPECT_THAT(solution->activities, IsEmpty());
  EXPECT_THAT(solution->duals, Each(0.0));
}

TEST(TrivialLp, ADemandedRowThatNoColumnCoversIsInfeasible) {
  EXPECT_EQ(solveTrivial(programOf(covering({1, 1})))->status, Status::kInfeasible);
  EXPECT_EQ(solveTrivial(programOf(covering({1e20, 0})))->status, Status::kInfeasible);
}

TEST(TrivialLp, ARealDemandNeedsASimplex) {
  EXPECT_FALSE(solveTrivial(programOf(covering({1, 0}))));
}

TEST(TrivialLp, CrossingBoundsAreInfeasible) {
  TestLp lp = covering({0, 0});
  lp.lower[1] = 2;
  lp.upper[1] = 1;
  EXPECT_EQ(solveTrivial(programOf(lp))->status, Status::kInfeasible);
}

TEST(TrivialLp, WithoutCoefficientsEachColumnIsAtItsCheapest) {
  TestLp lp{.cost = {2, -3, 0},
            .matrix = {{0, 0, 0}},
            .senses = "G",
            .rhs = {0},
            .lower = {1, 0, -4},
            .upper = {9, 5, -1}};
  EXPECT_THAT(solveTrivial(programOf(lp))->activities,
              ElementsAre(Pair(0, 1.0), Pair(1, 5.0), Pair(2, -1.0)));
  lp.upper[1] = 1e20;
  EXPECT_EQ(solveTrivial(programOf(lp))->status, Status::kUnbounded);
  lp.rhs[0] = 1;
  EXPECT_EQ(solveTrivial(programOf(lp))->status, Status::kInfeasible);
}

}  // namespace
}  // namespace corvane::lp::testing
