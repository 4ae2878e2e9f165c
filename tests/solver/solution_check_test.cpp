// The checker itself: it passes a right answer and finds each kind of wrong one.

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

Answer right() {
  Answer answer;
  answer.status = Status::kOptimal;
  answer.activities = {{0, 3.0}, {1, 1.0}};
  answer.duals = {1.5, 0.5};
  return answer;
}

std::string complaint(const Answer &answer) {
  return checkOptimal(program(), answer);
}

TEST(SolutionCheck, PassesTheOptimum) {
  EXPECT_EQ(complaint(right()), "");
}

TEST(SolutionCheck, FindsARowThatIsNotCovered) {
  Answer answer = right();
  answer.activities = {{0, 3.0}, {1, 0.9}};
  EXPECT_THAT(complaint(answer), HasSubstr("row 0 is"));
}

TEST(SolutionCheck, FindsAColumnOutOfItsBounds) {
  Answer answer = right();
  answer.activities = {{0, 4.0}, {1, 1.0}, {2, -1.0}};
  EXPECT_THAT(complaint(answer), HasSubstr("column 2 is -1"));
}

TEST(SolutionCheck, FindsAPriceOnASlackRow) {
  Answer answer = right();
  answer.activities = {{0, 6.0}};
  EXPECT_THAT(complaint(answer), HasSubstr("row 0 is 6"));
}

TEST(SolutionCheck, FindsANegativePrice) {
  Answer answer = right();
  answer.duals = {2.5, -0.5};
  EXPECT_THAT(complaint(answer), HasSubstr("at a price of -0.5"));
}

TEST(SolutionCheck, FindsANegativeReducedCost) {
  Answer answer = right();
  answer.duals = {1.5, 0.6};
  EXPECT_THAT(complaint(answer), HasSubstr("column 0 is 3"));
}

TEST(SolutionCheck, FindsAReducedCostOnAColumnInUse) {
  Answer answer = right();
  answer.duals = {1.5, 0.4};
  EXPECT_THAT(complaint(answer), HasSubstr("column 0 is 3"));
}

TEST(SolutionCheck, FindsObjectivesThatDiffer) {
  Answer answer = right();
  answer.activities = {{0, 3.0 + 1e-7}, {1, 1.0}};
  EXPECT_THAT(complaint(answer), HasSubstr("objective"));
}

TEST(SolutionCheck, FindsAnAnswerThatIsNoVertex) {
  const LinearProgram twins = programOf({.cost = {1, 1},
                                         .matrix = {{1, 1}},
                                         .senses = "G",
                                         .rhs = {2},
                                         .lower = {0, 0},
                                         .upper = {1e20, 1e20}});
  Answer answer;
  answer.status = Status::kOptimal;
  answer.duals = {1.0};
  answer.activities = {{0, 2.0}};
  EXPECT_EQ(checkOptimal(twins, answer), "");
  answer.activities = {{0, 1.0}, {1, 1.0}};
  EXPECT_THAT(checkOptimal(twins, answer), HasSubstr("2 columns between their bounds"));
}

TEST(SolutionCheck, FindsAnAnswerOfAnotherProgram) {
  Answer answer = right();
  answer.duals = {1.0};
  EXPECT_NE(complaint(answer), "");
  answer = right();
  answer.activities = {{3, 1.0}};
  EXPECT_NE(complaint(answer), "");
}

TEST(SolutionCheck, FindsAWrongStatus) {
  Answer answer;
  answer.status = Status::kInfeasible;
  EXPECT_THAT(checkAnswer(program(), answer), HasSubstr("status 3, but CLP says 1"));
}

}  // namespace
}  // namespace corvane::lp::testing
