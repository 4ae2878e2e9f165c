#include "solver/plain_solver.h"

#include <gtest/gtest.h>

#include <random>

#include "solver/program_of.h"
#include "solver/solution_check.h"

namespace corvane::lp::testing {
namespace {

// Rows of both senses that few columns satisfy, many do.
TestLp contested(unsigned seed) {
  std::mt19937 random(seed);
  const auto draw = [&](unsigned count) { return static_cast<double>(random() % count); };
  TestLp lp;
  for (int j = 0; j < 12; ++j) {
    lp.cost.push_back(1 + draw(2));
    lp.lower.push_back(0);
    lp.upper.push_back(6);
  }
  for (int i = 0; i < 5; ++i) {
    std::vector<double> row;
    for (int j = 0; j < 12; ++j) {
      row.push_back(draw(3));
    }
    lp.matrix.push_back(row);
    lp.senses += i == 4 ? 'L' : 'G';
    lp.rhs.push_back(i == 4 ? 60 : 10 + draw(8));
  }
  return lp;
}

TEST(PlainSolver, StartsAfreshAfterAFailedSolve) {
  int failed = 0;
  for (unsigned seed = 0; seed < 60; ++seed) {
    const TestLp lp = contested(seed);
    Session session;
    ASSERT_EQ(session.load(lp, 3), 0);
    if (session.solve(3, 5).status == 1) {
      continue;
    }
    ++failed;
    ASSERT_EQ(session.add(lp, 3, 12), 0);
    Session fresh;
    ASSERT_EQ(fresh.load(lp), 0);
    EXPECT_EQ(session.solve(12, 5), fresh.solve(12, 5)) << seed;
  }
  EXPECT_GT(failed, 10);
}

TEST(PlainSolver, SolvesByEitherSimplex) {
  const LinearProgram lp = programOf(contested(1));
  PlainSolver primal;
  PlainSolver dual;
  const Solution one = primal.solve(lp, Method::kPrimal);
  const Solution other = dual.solve(lp, Method::kDual);
  ASSERT_EQ(one.status, Status::kOptimal);
  EXPECT_EQ(checkOptimal(lp, one), "");
  EXPECT_EQ(checkOptimal(lp, other), "");
}

TEST(PlainSolver, TellsWhatHasNoOptimum) {
  const LinearProgram lp = programOf(
      {.cost = {-1}, .matrix = {{1}}, .senses = "G", .rhs = {1}, .lower = {0}, .upper = {1e20}});
  EXPECT_EQ(PlainSolver().solve(lp, Method::kPrimal).status, Status::kUnbounded);
}

}  // namespace
}  // namespace corvane::lp::testing
