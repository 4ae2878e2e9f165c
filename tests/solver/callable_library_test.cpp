// What the 13 operations promise their caller, faults included.

#include "solver/callable_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "solver/test_lp.h"

namespace corvane::lp::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::ElementsAre;

constexpr double kInf = std::numeric_limits<double>::infinity();

// minimise 2 a + 3 b, a + b >= 4, a + 3 b >= 6, a, b >= 0: a = 3, b = 1.
TestLp twoByTwo() {
  return {.cost = {2, 3},
          .matrix = {{1, 1}, {1, 3}},
          .senses = "GG",
          .rhs = {4, 6},
          .lower = {0, 0},
          .upper = {1e20, 1e20}};
}

TestAnswer solve(const TestLp &lp, bool barrier = false) {
  Session session;
  EXPECT_EQ(session.load(lp), 0);
  return session.solve(lp.columns(), lp.rows(), barrier);
}

TEST(CallableLibrary, SolvesByPrimalSimplex) {
  const TestAnswer answer = solve(twoByTwo());
  EXPECT_EQ(answer.code, 0);
  EXPECT_EQ(answer.status, 1);
  EXPECT_DOUBLE_EQ(answer.objective, 9.0);
  EXPECT_THAT(answer.x, ElementsAre(DoubleEq(3.0), DoubleEq(1.0)));
  EXPECT_THAT(answer.pi, ElementsAre(DoubleEq(1.5), DoubleEq(0.5)));
  EXPECT_THAT(answer.dj, Each(DoubleNear(0.0, 1e-12)));
}

TEST(CallableLibrary, SolvesByBarrier) {
  const TestAnswer answer = solve(twoByTwo(), true);
  EXPECT_EQ(answer.status, 1);
  EXPECT_DOUBLE_EQ(answer.objective, 9.0);
}

TEST(CallableLibrary, AddedColumnsEnterTheNextSolve) {
  const TestLp lp = twoByTwo();
  Session session;
  ASSERT_EQ(session.load(lp, 1), 0);
  EXPECT_DOUBLE_EQ(session.solve(1, 2).objective, 12.0);
  ASSERT_EQ(session.add(lp, 1, 2), 0);
  EXPECT_DOUBLE_EQ(session.solve(2, 2).objective, 9.0);
}

TEST(CallableLibrary, MaximisationTurnsTheSignsOfDuals) {
  // maximise a + b, a + 2 b <= 4, 3 a + b <= 6: duals are 0.4 and 0.2.
  const TestLp lp = {.objectiveSense = -1,
                     .cost = {1, 1},
                     .matrix = {{1, 2}, {3, 1}},
                     .senses = "LL",
                     .rhs = {4, 6},
                     .lower = {0, 0},
                     .upper = {1e20, 1e20}};
  const TestAnswer answer = solve(lp);
  EXPECT_NEAR(answer.objective, 2.8, 1e-12);
  EXPECT_NEAR(answer.pi[0], 0.4, 1e-12);
  EXPECT_NEAR(answer.pi[1], 0.2, 1e-12);
}

TEST(CallableLibrary, TellsInfeasible) {
  TestLp lp = twoByTwo();
  lp.upper = {1, 1};
  EXPECT_EQ(solve(lp).status, 3);
  EXPECT_EQ(solve(lp).code, 0);
}

TEST(CallableLibrary, TellsUnbounded) {
  TestLp lp = twoByTwo();
  lp.cost = {-1, 1};
  EXPECT_EQ(solve(lp).status, 2);
}

TEST(CallableLibrary, DemandingNothingGivesZeroDuals) {
  TestLp lp = twoByTwo();
  lp.rhs = {0, 0};
  const TestAnswer answer = solve(lp);
  EXPECT_EQ(answer.status, 1);
  EXPECT_THAT(answer.x, ElementsAre(0.0, 0.0));
  EXPECT_THAT(answer.pi, ElementsAre(0.0, 0.0));
  EXPECT_THAT(answer.dj, ElementsAre(2.0, 3.0));
}

TEST(CallableLibrary, DemandingNothingWithANegativeCostIsUnbounded) {
  TestLp lp = twoByTwo();
  lp.rhs = {0, 0};
  lp.cost = {2, -3};
  EXPECT_EQ(solve(lp).status, 2);
}

TEST(CallableLibrary, BoundsOf1e20AreInfinite) {
  TestLp lp = twoByTwo();
  lp.cost = {-1, 1};
  lp.upper = {1e20, 1e20};
  EXPECT_EQ(solve(lp).status, 2);
  lp.upper = {1e19, 1e20};
  EXPECT_EQ(solve(lp).status, 1);
  lp = twoByTwo();
  lp.rhs = {4, 1e20};
  EXPECT_EQ(solve(lp).status, 3);
  lp.rhs = {4, -1e20};
  EXPECT_DOUBLE_EQ(solve(lp).objective, 8.0);
}

TEST(CallableLibrary, CrossingBoundsAreInfeasible) {
  TestLp lp = twoByTwo();
  lp.lower = {3, 0};
  lp.upper = {2, 1e20};
  EXPECT_EQ(solve(lp).status, 3);
}

TEST(CallableLibrary, AnEmptyLpIsOptimal) {
  Session session;
  EXPECT_EQ(session.solve(0, 0).status, 1);
  double objective = 1.0;
  EXPECT_EQ(CPXgetobjval(session.env, session.lp, &objective), 0);
  EXPECT_EQ(objective, 0.0);
  ASSERT_EQ(CPXcopylp(session.env, session.lp, 0, 0, 1, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, nullptr, nullptr, nullptr, nullptr),
            0);
  EXPECT_EQ(session.solve(0, 0).status, 1);
}

TEST(CallableLibrary, RowsWithoutColumns) {
  TestLp lp = {.senses = "GE", .rhs = {-1, 0}};
  EXPECT_EQ(solve(lp).status, 1);
  lp.rhs = {1, 0};
  EXPECT_EQ(solve(lp).status, 3);
}

TEST(CallableLibrary, ColumnsWithoutRows) {
  TestLp lp = {.cost = {1, -1, 0}, .lower = {2, 0, -1e20}, .upper = {1e20, 5, 1e20}};
  const TestAnswer answer = solve(lp);
  EXPECT_EQ(answer.status, 1);
  EXPECT_THAT(answer.x, ElementsAre(2.0, 5.0, 0.0));
  EXPECT_EQ(answer.objective, -3.0);
  EXPECT_THAT(answer.dj, ElementsAre(1.0, -1.0, 0.0));
  lp.cost[2] = 1;
  EXPECT_EQ(solve(lp).status, 2);
}

TEST(CallableLibrary, AColumnWithoutEntries) {
  TestLp lp = twoByTwo();
  lp.cost = {2, 3, 7};
  lp.matrix = {{1, 1, 0}, {1, 3, 0}};
  lp.lower = {0, 0, 0};
  lp.upper = {1e20, 1e20, 1e20};
  const TestAnswer answer = solve(lp);
  EXPECT_DOUBLE_EQ(answer.objective, 9.0);
  EXPECT_DOUBLE_EQ(answer.dj[2], 7.0);
  lp.cost[2] = -7;
  EXPECT_EQ(solve(lp).status, 2);
}

TEST(CallableLibrary, RefusesWhatIsNoNumber) {
  for (const double bad : {kNan, kInf, -kInf, 1e20}) {
    TestLp lp = twoByTwo();
    lp.cost[1] = bad;
    EXPECT_NE(Session().load(lp), 0);
    lp = twoByTwo();
    lp.matrix[0][1] = bad;
    EXPECT_NE(Session().load(lp), 0);
  }
  TestLp lp = twoByTwo();
  lp.rhs[0] = kNan;
  EXPECT_NE(Session().load(lp), 0);
  lp = twoByTwo();
  lp.lower[0] = kNan;
  EXPECT_NE(Session().load(lp), 0);
  lp = twoByTwo();
  lp.upper[0] = kNan;
  EXPECT_NE(Session().load(lp), 0);
  lp = twoByTwo();
  lp.senses = "GR";
  EXPECT_NE(Session().load(lp), 0);
  lp = twoByTwo();
  lp.objectiveSense = 0;
  EXPECT_NE(Session().load(lp), 0);
}

TEST(CallableLibrary, AFailedLoadLeavesNothingToSolve) {
  TestLp lp = twoByTwo();
  Session session;
  ASSERT_EQ(session.load(lp), 0);
  ASSERT_EQ(session.solve(2, 2).status, 1);
  lp.cost[1] = kNan;
  ASSERT_NE(session.load(lp), 0);
  EXPECT_EQ(CPXgetstat(session.env, session.lp), 6);
  EXPECT_NE(CPXprimopt(session.env, session.lp), 0);
  EXPECT_NE(CPXhybbaropt(session.env, session.lp, 'p'), 0);
  EXPECT_NE(session.add(twoByTwo(), 0, 2), 0);
  EXPECT_EQ(CPXgetstat(session.env, session.lp), 6);
  ASSERT_EQ(session.load(twoByTwo()), 0);
  EXPECT_EQ(session.solve(2, 2).status, 1);
}

TEST(CallableLibrary, RefusesBadColumnsAndKeepsTheOthers) {
  const double cost[] = {1};
  const double lower[] = {0};
  const double upper[] = {1e20};
  const int start[] = {0};
  const double value[] = {1, 1};
  Session session;
  ASSERT_EQ(session.load(twoByTwo()), 0);
  const auto add = [&](int columns, int nonzeros, const int *starts, const int *rows) {
    return CPXaddcols(session.env, session.lp, columns, nonzeros, cost, starts, rows, value, lower,
                      upper, nullptr);
  };
  const int twice[] = {1, 1};
  const int beyond[] = {0, 2};
  const int negative[] = {-1, 0};
  const int good[] = {0, 1};
  const int late[] = {3};
  EXPECT_NE(add(1, 2, start, twice), 0);
  EXPECT_NE(add(1, 2, start, beyond), 0);
  EXPECT_NE(add(1, 2, start, negative), 0);
  EXPECT_NE(add(1, 2, late, good), 0);
  EXPECT_NE(add(-1, 2, start, good), 0);
  EXPECT_NE(add(1, -1, start, good), 0);
  EXPECT_NE(add(1, 2, start, nullptr), 0);
  EXPECT_NE(add(1, 2, nullptr, good), 0);
  EXPECT_DOUBLE_EQ(session.solve(2, 2).objective, 9.0);
  EXPECT_EQ(add(0, 0, nullptr, nullptr), 0);
  EXPECT_EQ(add(1, 2, start, good), 0);
  EXPECT_DOUBLE_EQ(session.solve(3, 2).objective, 6.0);
}

TEST(CallableLibrary, RefusesMissingArraysAndNegativeCounts) {
  Session session;
  const double number[] = {1};
  const int zero[] = {0};
  const auto load = [&](int columns, int rows, const double *cost, const double *rhs,
                        const char *senses, const int *start, const int *count) {
    return CPXcopylp(session.env, session.lp, columns, rows, 1, cost, rhs, senses, start, count,
                     zero, number, number, number, nullptr);
  };
  EXPECT_EQ(load(1, 1, number, number, "G", zero, zero), 0);
  EXPECT_NE(load(-1, 1, number, number, "G", zero, zero), 0);
  EXPECT_NE(load(1, -1, number, number, "G", zero, zero), 0);
  EXPECT_NE(load(1, 1, nullptr, number, "G", zero, zero), 0);
  EXPECT_NE(load(1, 1, number, nullptr, "G", zero, zero), 0);
  EXPECT_NE(load(1, 1, number, number, nullptr, zero, zero), 0);
  EXPECT_NE(load(1, 1, number, number, "G", nullptr, zero), 0);
  EXPECT_NE(load(1, 1, number, number, "G", zero, nullptr), 0);
}

TEST(CallableLibrary, ReadsRangesOfAnAnswer) {
  Session session;
  ASSERT_EQ(session.load(twoByTwo()), 0);
  double out[2] = {-7, -7};
  EXPECT_NE(CPXgetx(session.env, session.lp, out, 0, 1), 0) << "before a solve";
  EXPECT_NE(CPXgetpi(session.env, session.lp, out, 0, 1), 0);
  EXPECT_NE(CPXgetdj(session.env, session.lp, out, 0, 1), 0);
  EXPECT_NE(CPXgetobjval(session.env, session.lp, out), 0);
  EXPECT_EQ(CPXgetstat(session.env, session.lp), 6);
  ASSERT_EQ(session.solve(2, 2).status, 1);
  EXPECT_EQ(CPXgetx(session.env, session.lp, out, 1, 1), 0);
  EXPECT_DOUBLE_EQ(out[0], 1.0);
  EXPECT_EQ(out[1], -7);
  for (const auto &[begin, end] : {std::pair{-1, 0}, {0, 2}, {1, 0}, {2, 2}}) {
    EXPECT_NE(CPXgetx(session.env, session.lp, out, begin, end), 0);
    EXPECT_NE(CPXgetpi(session.env, session.lp, out, begin, end), 0);
    EXPECT_NE(CPXgetdj(session.env, session.lp, out, begin, end), 0);
  }
  EXPECT_NE(CPXgetx(session.env, session.lp, nullptr, 0, 1), 0);
  EXPECT_NE(CPXgetobjval(session.env, session.lp, nullptr), 0);
}

// CLP's barrier ends the process on these two.
TEST(CallableLibrary, BarrierOnRowsThatNeverBind) {
  const TestLp small{.cost = {5},
                     .matrix = {{3}, {0}, {0}, {2}},
                     .senses = "GGGG",
                     .rhs = {-1e20, -1e20, -1e20, 7},
                     .lower = {0},
                     .upper = {1e20}};
  const TestLp larger{.cost = {4, 7, 8, 1, 2, 3},
                      .matrix = {{0, 0, 0, 0, 0, 2},
                                 {3, 0, 0, 1, 0, 1},
                                 {0, 0, 2, 0, 2, 0},
                                 {1, 0, 2, 0, 0, 0},
                                 {0, 0, 0, 0, 0, 0},
                                 {0, 2, 0, 0, 3, 2}},
                      .senses = "GGGGGG",
                      .rhs = {7, -1e20, 3, -1e20, -4, 7},
                      .lower = {0, 0, 0, 0, 0, 0},
                      .upper = std::vector<double>(6, 1e20)};
  for (const auto &[lp, objective] : {std::pair(small, 17.5), std::pair(larger, 13.5)}) {
    Session session;
    ASSERT_EQ(session.load(lp), 0);
    const TestAnswer answer = session.solve(lp.columns(), lp.rows(), true);
    EXPECT_EQ(answer.status, 1);
    EXPECT_NEAR(answer.objective, objective, 1e-9);
    EXPECT_EQ(answer.pi[1], 0.0);
  }
}

TEST(CallableLibrary, AColumnThatBindsWhatNoneBoundBefore) {
  // The row demands -2 at least: idle until a column with a negative coefficient joins.
  const TestLp lp{.cost = {1, -1},
                  .matrix = {{1, 1}, {0, -1}},
                  .senses = "GG",
                  .rhs = {4, -2},
                  .lower = {0, 0},
                  .upper = {1e20, 1e20}};
  Session session;
  ASSERT_EQ(session.load(lp, 1), 0);
  EXPECT_EQ(session.solve(1, 2).objective, 4.0);
  ASSERT_EQ(session.add(lp, 1, 2), 0);
  EXPECT_NEAR(session.solve(2, 2).objective, 0.0, 1e-9);
}

TEST(CallableLibrary, LargeBoundsHideNoDemand) {
  TestLp bounded{.cost = {1, 2},
                 .matrix = {{1, 1}},
                 .senses = "G",
                 .rhs = {5},
                 .lower = {0, 0},
                 .upper = {1e15, 3}};
  TestLp idle{.cost = {1, 2},
              .matrix = {{1, 1}, {1, 0}},
              .senses = "GG",
              .rhs = {5, -1e15},
              .lower = {0, 0},
              .upper = {1e20, 1e20}};
  TestLp limited = idle;
  limited.senses = "GL";
  limited.rhs[1] = 1e15;
  for (const TestLp &lp : {bounded, idle, limited}) {
    Session session;
    ASSERT_EQ(session.load(lp), 0);
    const TestAnswer answer = session.solve(2, lp.rows());
    EXPECT_EQ(answer.status, 1);
    EXPECT_NEAR(answer.objective, 5.0, 1e-9);
  }
}

TEST(CallableLibrary, NullHandles) {
  CPXENVptr noEnv = nullptr;
  CPXLPptr noLp = nullptr;
  int status = 0;
  double out = 0.0;
  Session session;
  EXPECT_NE(CPXcloseCPLEX(nullptr), 0);
  EXPECT_NE(CPXcloseCPLEX(&noEnv), 0);
  EXPECT_EQ(CPXcreateprob(nullptr, &status, "x"), nullptr);
  EXPECT_NE(status, 0);
  EXPECT_EQ(CPXcreateprob(nullptr, nullptr, nullptr), nullptr);
  EXPECT_NE(CPXprimopt(nullptr, session.lp), 0);
  EXPECT_NE(CPXprimopt(session.env, nullptr), 0);
  EXPECT_NE(CPXhybbaropt(session.env, nullptr, 'p'), 0);
  EXPECT_EQ(CPXgetstat(session.env, nullptr), 6);
  EXPECT_NE(CPXgetobjval(session.env, nullptr, &out), 0);
  EXPECT_NE(CPXgetx(session.env, nullptr, &out, 0, 0), 0);
  EXPECT_NE(CPXgetpi(nullptr, nullptr, &out, 0, 0), 0);
  EXPECT_NE(CPXgetdj(session.env, nullptr, &out, 0, 0), 0);
  EXPECT_NE(CPXfreeprob(session.env, nullptr), 0);
  EXPECT_NE(CPXfreeprob(session.env, &noLp), 0);
  EXPECT_NE(CPXaddcols(session.env, nullptr, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr),
            0);
  EXPECT_NE(CPXcopylp(session.env, nullptr, 0, 0, 1, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, nullptr, nullptr, nullptr, nullptr),
            0);
}

TEST(CallableLibrary, ProblemsBelongToTheirEnvironment) {
  Session one;
  Session other;
  EXPECT_NE(CPXprimopt(one.env, other.lp), 0);
  CPXLPptr foreign = other.lp;
  EXPECT_NE(CPXfreeprob(one.env, &foreign), 0);
  EXPECT_EQ(foreign, other.lp);
  EXPECT_EQ(CPXfreeprob(other.env, &foreign), 0);
  EXPECT_EQ(foreign, nullptr);
}

TEST(CallableLibrary, OpensWithoutAStatus) {
  int status = -1;
  CPXENVptr env = CPXopenCPLEXruntime(&status, 0, nullptr);
  EXPECT_EQ(status, 0);
  ASSERT_NE(env, nullptr);
  CPXLPptr lp = CPXcreateprob(env, &status, nullptr);
  EXPECT_EQ(status, 0);
  EXPECT_NE(lp, nullptr);
  EXPECT_EQ(CPXcloseCPLEX(&env), 0);
  EXPECT_EQ(env, nullptr);
}

TEST(CallableLibrary, NumbersOfAnySize) {
  for (const double cost : {1e-300, 1e-12, 1e-6, 1.0, 1e9, 1e19}) {
    for (const double demand : {1e-300, 1e-8, 1.0, 2147483647.0, 1e15, 9e19}) {
      TestLp lp = twoByTwo();
      lp.cost = {2 * cost, 3 * cost};
      lp.rhs = {4 * demand / 6, demand};
      const TestAnswer answer = solve(lp);
      EXPECT_EQ(answer.status, 1) << cost << ' ' << demand;
      const double expected = 1.5 * demand * cost;
      EXPECT_NEAR(answer.objective, expected, 1e-9 * expected) << cost << ' ' << demand;
    }
  }
}

}  // namespace
}  // namespace corvane::lp::testing
