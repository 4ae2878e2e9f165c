#include "solver/sifting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "solver/program_of.h"
#include "solver/solution_check.h"

namespace corvane::lp::testing {
namespace {

using ::testing::ElementsAre;

// A column for each of three rows, and two that serve all of them, the last one best.
LinearProgram coveringProgram() {
  return programOf({.cost = {1, 1, 1, 2, 1.5},
                    .matrix = {{1, 0, 0, 1, 1}, {0, 1, 0, 1, 1}, {0, 0, 1, 1, 1}},
                    .senses = "GGG",
                    .rhs = {4, 4, 4},
                    .lower = {0, 0, 0, 0, 0},
                    .upper = std::vector<double>(5, 1e20)});
}

TEST(Sifting, MovesInWhatImprovesTheWorkingSet) {
  const LinearProgram lp = coveringProgram();
  Sifting sifting(lp, {0, 1, 2}, {.leastMovedIn = 1});
  EXPECT_EQ(sifting.optimise(Method::kDual), Status::kOptimal);
  EXPECT_EQ(checkOptimal(lp, sifting.solution()), "");
  EXPECT_NEAR(objectiveValue(lp, sifting.solution().activities), 6.0, 1e-9);
}

TEST(Sifting, HasNothingToMoveInAtTheOptimum) {
  const LinearProgram lp = coveringProgram();
  Sifting sifting(lp, {0, 1, 2}, {});
  ASSERT_EQ(sifting.optimise(Method::kPrimal), Status::kOptimal);
  EXPECT_FALSE(sifting.moveInViolated(sifting.solution().duals));
}

TEST(Sifting, TakesInColumnsWithoutPricingThem) {
  const LinearProgram lp = coveringProgram();
  Sifting sifting(lp, {0, 1, 2}, {});
  sifting.takeInFrom(3);
  EXPECT_THAT(sifting.working().columns(), ElementsAre(0, 1, 2, 3, 4));
  sifting.takeInFrom(5);
  EXPECT_THAT(sifting.working().columns(), ElementsAre(0, 1, 2, 3, 4));
}

TEST(Sifting, DropsWhatIsBeyondTheThresholdAndKeepsTheBasis) {
  const LinearProgram lp = coveringProgram();
  Sifting sifting(lp, {0, 1, 2, 3, 4}, {.surplusPerRow = 1, .keptPerRow = 1});
  ASSERT_EQ(sifting.optimise(Method::kDual), Status::kOptimal);
  const Solution before = sifting.solution();
  sifting.dropSurplus(before.duals);
  EXPECT_EQ(sifting.working().columns().size(), 3U);
  EXPECT_THAT(sifting.working().columns(), ::testing::Contains(4)) << "it is in the basis";
  ASSERT_EQ(sifting.optimise(Method::kPrimal), Status::kOptimal);
  EXPECT_EQ(checkOptimal(lp, sifting.solution()), "");
}

TEST(Sifting, KeepsASmallWorkingSetWhole) {
  const LinearProgram lp = coveringProgram();
  Sifting sifting(lp, {0, 1, 2, 3, 4}, {});
  ASSERT_EQ(sifting.optimise(Method::kDual), Status::kOptimal);
  sifting.dropSurplus(sifting.solution().duals);
  EXPECT_EQ(sifting.working().columns().size(), 5U);
}

TEST(Sifting, HandsTheProgramOverAgainWhenItsNumbersGrow) {
  LinearProgram lp = coveringProgram();
  Sifting sifting(lp, {0, 1, 2, 3, 4}, {});
  ASSERT_EQ(sifting.optimise(Method::kDual), Status::kOptimal);
  EXPECT_EQ(sifting.working().costScale(), 1.0);
  const LinearProgram dear = programOf({.cost = {3e6},
                                        .matrix = {{1}, {0}, {0}},
                                        .senses = "GGG",
                                        .rhs = {4, 4, 4},
                                        .lower = {0},
                                        .upper = {1e20}});
  ASSERT_TRUE(lp.addColumns(batchOf(dear.pool())));
  ASSERT_EQ(sifting.optimise(Method::kPrimal), Status::kOptimal);
  EXPECT_EQ(sifting.working().costScale(), 0.25);
  EXPECT_EQ(checkOptimal(lp, sifting.solution()), "");
}

TEST(ObjectivesAgree, AtAnOptimumAlone) {
  const LinearProgram lp = coveringProgram();
  const Solution optimum{Status::kOptimal, {{4, 4.0}}, {0.5, 0.5, 0.5}};
  EXPECT_TRUE(objectivesAgree(lp, optimum));
  Solution perturbed = optimum;
  perturbed.duals[1] += 1e-6;
  EXPECT_FALSE(objectivesAgree(lp, perturbed));
  perturbed = optimum;
  perturbed.activities[0].second += 1e-6;
  EXPECT_FALSE(objectivesAgree(lp, perturbed));
}

}  // namespace
}  // namespace corvane::lp::testing
