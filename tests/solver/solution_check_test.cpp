// The checker itself: it passes a right solution and finds each kind of wrong one.

#include "solver/solution_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "solver/program_of.h"

namespace corvane::lp::testing {
namespace {

using ::testing::HasSubstr;

// minimise 2 a + 3 b + 9 c, a + b + c >= 4, a + 3 b + c >= 6: a = 3, b = 1, duals 1.5 and 0.5.
LinearProgram program() {
  return programOf({.cost = {2, 3, 9},
                    .matrix = {{1, 1, 1}, {1, 3, 1}},
                    .senses = "GG",
                    .rhs = {4, 6},
                    .lower = {0, 0, 0},
                    .upper = {1e20, 1e20, 1e20}});
}

Solution right() {
  Solution solution;
  solution.status = Status::kOptimal;
  solution.activities = {{0, 3.0}, {1, 1.0}};
  solution.duals = {1.5, 0.5};
  return solution;
}

std::string complaint(const Solution &solution) {
  return checkOptimal(program(), solution);
}

TEST(SolutionCheck, PassesTheOptimum) {
  EXPECT_EQ(complaint(right()), "");
}

TEST(SolutionCheck, FindsARowThatIsNotCovered) {
  Solution solution = right();
  solution.activities = {{0, 3.0}, {1, 0.9}};
  EXPECT_THAT(complaint(solution), HasSubstr("row 0 is"));
}

TEST(SolutionCheck, FindsAColumnOutOfItsBounds) {
  Solution solution = right();
  solution.activities = {{0, 4.0}, {1, 1.0}, {2, -1.0}};
  EXPECT_THAT(complaint(solution), HasSubstr("column 2 is -1"));
}

TEST(SolutionCheck, FindsAPriceOnASlackRow) {
  Solution solution = right();
  solution.activities = {{0, 6.0}};
  EXPECT_THAT(complaint(solution), HasSubstr("row 0 is 6"));
}

TEST(SolutionCheck, FindsANegativePrice) {
  Solution solution = right();
  solution.duals = {2.5, -0.5};
  EXPECT_THAT(complaint(solution), HasSubstr("at a price of -0.5"));
}

TEST(SolutionCheck, FindsANegativeReducedCost) {
  Solution solution = right();
  solution.duals = {1.5, 0.6};
  EXPECT_THAT(complaint(solution), HasSubstr("column 0 is 3"));
}

TEST(SolutionCheck, FindsAReducedCostOnAColumnInUse) {
  Solution solution = right();
  solution.duals = {1.5, 0.4};
  EXPECT_THAT(complaint(solution), HasSubstr("column 0 is 3"));
}

TEST(SolutionCheck, FindsObjectivesThatDiffer) {
  Solution solution = right();
  solution.activities = {{0, 3.0 + 1e-7}, {1, 1.0}};
  EXPECT_THAT(complaint(solution), HasSubstr("objective"));
}

TEST(SolutionCheck, FindsAnAnswerThatIsNoVertex) {
  const LinearProgram twins = programOf({.cost = {1, 1},
                                         .matrix = {{1, 1}},
                                         .senses = "G",
                                         .rhs = {2},
                                         .lower = {0, 0},
                                         .upper = {1e20, 1e20}});
  Solution solution;
  solution.status = Status::kOptimal;
  solution.duals = {1.0};
  solution.activities = {{0, 2.0}};
  EXPECT_EQ(checkOptimal(twins, solution), "");
  solution.activities = {{0, 1.0}, {1, 1.0}};
  EXPECT_THAT(checkOptimal(twins, solution), HasSubstr("2 columns between their bounds"));
}

TEST(SolutionCheck, FindsAnAnswerOfAnotherProgram) {
  Solution solution = right();
  solution.duals = {1.0};
  EXPECT_NE(complaint(solution), "");
  solution = right();
  solution.activities = {{3, 1.0}};
  EXPECT_NE(complaint(solution), "");
}

}  // namespace
}  // namespace corvane::lp::testing
