#include "plan/pattern_pool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plan/mill_text.h"
#include "plan/planned.h"

namespace corvane::plan {
namespace {

using testing::DoubleNear;

// The plan of the first mill with the patterns of the others offered too.
struct Pooled {
  Pooled(const TestMill &mill, const std::vector<TestMill> &others)
      : network(network::readNetworkText(importText(mill))), problem(makeProblem(network, {})) {
    for (const TestMill &other : others) {
      const Network otherNetwork = network::readNetworkText(importText(other));
      reports.push_back(addPool(network, problem, otherNetwork, makeProblem(otherNetwork, {})));
    }
  }

  PlanRecord plan() const {
    const CompactLp lp(problem);
    LinearSolver solver(lp.model());
    const LinearSolution solution = TwoSteps(problem, lp, solver, {}).solve();
    return makeRecord(network, problem, readPlan(problem, lp, solution.primal), {});
  }

  Network network;
  PlanProblem problem;
  std::vector<PoolReport> reports;
};

TestMill millWith(const std::vector<std::vector<double>> &patterns, bool batch = false) {
  TestMill mill = smallMill();
  mill.batch = batch;
  mill.cutters[0].patterns = patterns;
  mill.orders = {{"G", "A", 50.0, 0, 20}, {"G", "A", 60.0, 0, 0}, {"G", "A", 40.0, 0, 5}};
  return mill;
}

// Alone 20 reels lose 50 inches each; with the other run's 50 + 50 there are 10 without trim.
TEST(PatternPool, PatternsOfAnotherRunMakeThePlanCheaper) {
  const TestMill mill = millWith({{50}, {60, 40}});
  const Pooled alone(mill, {});
  EXPECT_THAT(alone.plan().totals.trimInches, DoubleNear(20 * 50, 1e-6));
  const Pooled pooled(mill, {millWith({{50, 50}, {60, 40}})});
  const PlanRecord record = pooled.plan();
  EXPECT_TRUE(record.faults.empty()) << record.faults.front();
  EXPECT_THAT(record.totals.trimInches, DoubleNear(0, 1e-6));
  EXPECT_EQ(pooled.reports[0].added, 1);
  EXPECT_EQ(pooled.reports[0].known, 1);
  EXPECT_EQ(pooled.problem.patterns.back().name, "G_Pattern_2_C_100");
  EXPECT_TRUE(pooled.problem.patterns.back().offered);
}

TEST(PatternPool, EqualPatternsOfSeveralRunsComeOnce) {
  const Pooled pooled(millWith({{50}}), {millWith({{50, 50}}), millWith({{50, 50}, {60, 40}})});
  EXPECT_EQ(pooled.reports[0].added, 1);
  EXPECT_EQ(pooled.reports[1].added, 1);
  EXPECT_EQ(pooled.reports[1].known, 1);
}

TEST(PatternPool, AWidthThatNoPatternCutComesInReach) {
  const TestMill mill = millWith({{50}});
  EXPECT_EQ(Pooled(mill, {}).plan().totals.unmetOutOfReach, 5);
  const PlanRecord record = Pooled(mill, {millWith({{60, 40}})}).plan();
  EXPECT_EQ(record.totals.unmetOutOfReach, 0);
  EXPECT_THAT(record.totals.unmetRolls, DoubleNear(0, 1e-7));
  EXPECT_TRUE(record.faults.empty());
}

TEST(PatternPool, AMillWithBatchesGivesAPatternABatch) {
  const Pooled pooled(millWith({{50}}, true), {millWith({{50, 50}})});
  EXPECT_EQ(pooled.problem.patterns.back().deckleArcs.size(), 2U);
  EXPECT_TRUE(pooled.plan().faults.empty());
}

TEST(PatternPool, WhatTheMillDoesNotHaveIsCountedOrRefused) {
  TestMill other = millWith({{50, 50}, {33, 33}});
  EXPECT_EQ(Pooled(millWith({{50}}), {other}).reports[0].foreign, 1);
  other.cutters[0].name = "D";
  EXPECT_THROW(Pooled(millWith({{50}}), {other}), network::Refused);
}

TEST(PatternPool, ACutterOfAnotherDeckleWidthIsAnother) {
  TestMill other = millWith({{30, 30}});
  other.cutters[0].deckle = 90;
  EXPECT_THROW(Pooled(millWith({{50}}), {other}), network::Refused);
}

}  // namespace
}  // namespace corvane::plan
