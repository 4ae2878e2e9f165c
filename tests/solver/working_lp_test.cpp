#include "solver/working_lp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "solver/program_of.h"

namespace corvane::lp::testing {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

// Row 1 demands nothing; column 1 serves row 0 twice.
LinearProgram smallProgram() {
  return programOf({.cost = {1, 1},
                    .matrix = {{1, 2}, {1, 1}, {1, 0}},
                    .senses = "GGG",
                    .rhs = {8, -1, 2},
                    .lower = {0, 0},
                    .upper = {1e20, 1e20}});
}

TEST(WorkingLp, SolvesByEachMethod) {
  const LinearProgram lp = smallProgram();
  using Solve = Status (WorkingLp::*)();
  for (const Solve solve : {&WorkingLp::primal, &WorkingLp::dual, &WorkingLp::barrier}) {
    WorkingLp working(lp, {0, 1});
    ASSERT_EQ((working.*solve)(), Status::kOptimal);
    EXPECT_THAT(working.activities(),
                ElementsAre(Pair(0, DoubleNear(2, 1e-9)), Pair(1, DoubleNear(3, 1e-9))));
    EXPECT_THAT(working.duals(), ElementsAre(DoubleNear(0.5, 1e-9), 0.0, DoubleNear(0.5, 1e-9)));
    EXPECT_TRUE(working.isBasic(0));
    EXPECT_TRUE(working.rowIsBasic(1)) << "it was not handed over";
    EXPECT_FALSE(working.rowIsBasic(0));
  }
}

TEST(WorkingLp, HoldsTheColumnsThatItWasGiven) {
  const LinearProgram lp = smallProgram();
  WorkingLp working(lp, {0});
  ASSERT_EQ(working.primal(), Status::kOptimal);
  EXPECT_THAT(working.activities(), ElementsAre(Pair(0, DoubleNear(8, 1e-9))));
  working.addColumns(std::vector<int>{1});
  EXPECT_THAT(working.columns(), ElementsAre(0, 1));
  ASSERT_EQ(working.primal(), Status::kOptimal);
  EXPECT_EQ(working.activities().size(), 2U);
}

TEST(WorkingLp, ForbidsExcessAndTakesOtherCosts) {
  const LinearProgram lp = smallProgram();
  WorkingLp working(lp, {0, 1});
  working.setCost(0, 0.25);
  ASSERT_EQ(working.primal(), Status::kOptimal);
  EXPECT_THAT(working.activities(), ElementsAre(Pair(0, DoubleNear(8, 1e-9))));
  working.forbidExcess(2);
  ASSERT_EQ(working.primal(), Status::kOptimal);
  EXPECT_THAT(working.activities(),
              ElementsAre(Pair(0, DoubleNear(2, 1e-9)), Pair(1, DoubleNear(3, 1e-9))));
}

TEST(WorkingLp, NoLongerFitsWhenNumbersOrRowsChange) {
  LinearProgram lp = smallProgram();
  const WorkingLp working(lp, {0, 1});
  EXPECT_TRUE(working.stillFits());
  const ColumnPool column{.cost = {-1}, .lower = {0}, .upper = {1e20}, .row = {1}, .value = {-1}};
  ASSERT_TRUE(lp.addColumns(batchOf(column)));
  EXPECT_FALSE(working.stillFits()) << "row 1 may bind now";
}

}  // namespace
}  // namespace corvane::lp::testing
