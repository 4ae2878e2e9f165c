#include "plan/whole_reels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "plan/linear_solver.h"
#include "plan/mill_text.h"
#include "plan/planned.h"
#include "plan/random_reels.h"
#include "plan/reel_dive.h"
#include "plan/reel_neighbourhood.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

constexpr double kTolerance = 1e-6;

double activity(const ReelSpace &space, const std::vector<double> &values, int row) {
  double sum = 0;
  for (const int column : space.columnsOf(row)) {
    for (std::size_t i = 0; i < space.rowsOf(column).size(); ++i) {
      sum += space.rowsOf(column)[i] == row
                 ? space.entriesOf(column)[i] * values[static_cast<std::size_t>(column)]
                 : 0;
    }
  }
  return sum;
}

void expectPlan(const ReelSpace &space, const ReelPlan &plan) {
  for (int row = 0; row < space.model().rows(); ++row) {
    const double sum = activity(space, plan.values, row);
    EXPECT_GE(sum, space.model().rowLower[static_cast<std::size_t>(row)] - kTolerance) << row;
    EXPECT_LE(sum, space.model().rowUpper[static_cast<std::size_t>(row)] + kTolerance) << row;
  }
  for (const int column : space.reels()) {
    const double reels = plan.values[static_cast<std::size_t>(column)];
    EXPECT_EQ(reels, std::round(reels));
  }
  for (const double value : plan.values) {
    EXPECT_GE(value, -kTolerance);
  }
  const ReelPlan again = space.planOf(plan.values);
  EXPECT_NEAR(plan.cost, again.cost, kTolerance);
  EXPECT_NEAR(plan.unmet, again.unmet, kTolerance);
}

LinearModel wholeModel(const ReelSpace &space) {
  LinearModel model = space.model();
  // A weight that none of these small plans can outweigh.
  for (std::size_t column = 0; column < model.cost.size(); ++column) {
    model.cost[column] += 1e5 * space.unmetWeights()[column];
  }
  for (const int column : space.reels()) {
    model.whole[static_cast<std::size_t>(column)] = 1;
  }
  return model;
}

void tellNobody(const std::string & /*way*/, double /*rolls*/, double /*gap*/) {}

TEST(ReelPlans, LessUnmetIsBetterWhateverItCosts) {
  EXPECT_TRUE(isBetter({{}, 3, 1e12}, {{}, 4, -1e12}));
  EXPECT_FALSE(isBetter({{}, 4, -1e12}, {{}, 3, 1e12}));
  EXPECT_TRUE(isBetter({{}, 3, 10}, {{}, 3, 11}));
  EXPECT_FALSE(isBetter({{}, 3, 11}, {{}, 3, 11}));
}

TEST(ReelPlans, NoiseIsNoGain) {
  EXPECT_FALSE(isBetter({{}, 3 - 1e-6, 12}, {{}, 3, 11}));
  EXPECT_TRUE(isBetter({{}, 3 + 1e-6, 10}, {{}, 3, 11}));
  EXPECT_FALSE(isBetter({{}, 3, 1e6 - 1e-5}, {{}, 3, 1e6}));
}

TEST(ReelSpace, CountsMoneyAndUnmetRollsApart) {
  const RandomReels mill(3, 3);
  std::vector<double> values(mill.space.costs().size());
  const auto unmet = static_cast<std::size_t>(mill.lp.unmetColumns().front());
  const auto reels = static_cast<std::size_t>(mill.space.reels().front());
  values[unmet] = 2;
  values[reels] = 3;
  const ReelPlan plan = mill.space.planOf(values);
  EXPECT_EQ(plan.unmet, 2);
  EXPECT_EQ(plan.cost, 3 * mill.lp.model().cost[reels]);
}

// North makes a reel a day, South too. 70 rolls of 10 inches (7 reels) from North cost 1 each, from
// South 90; a roll of 60 comes from North alone. All that is ordered takes 6 + 1 reels of North and
// 1 of South: 8 x 10 to feed them and 60 + 1 + 10 x 90 of freight, 1041. Without the roll of 60 it
// would be 7 x 10 + 70 = 140: one roll for 901, nine times what any roll costs by itself.
TestMill dearRollMill() {
  TestMill mill = smallMill();
  const std::vector<double> tens(10, 10.0);
  mill.cutters = {{"North", "C", "G", 100.0, 1.0, 0.0, {tens, {60}}},
                  {"South", "D", "G", 100.0, 1.0, 0.0, {tens}}};
  mill.orders = {{"G", "A", 10.0, 0, 70}, {"G", "A", 60.0, 0, 1}};
  mill.rates = {{"North", "A", "Truck", 1.0, 0.0}, {"South", "A", "Barge", 90.0, 0.0}};
  return mill;
}

// The plan that one sum with a weight of 900 or less would take.
ReelPlan planWithoutTheRoll(const ReelSpace &space) {
  std::vector<double> values(space.costs().size());
  for (int column = 0; column < space.model().columns(); ++column) {
    const ColumnRole &role = space.lp().column(column);
    const PlanProblem &problem = space.problem();
    double &value = values[static_cast<std::size_t>(column)];
    if (role.kind == ColumnKind::kReels) {
      value = problem.patterns[role.what].name == "G_Pattern_0_C_100" ? 7 : 0;
    } else if (role.kind == ColumnKind::kShip) {
      value = problem.stores[problem.routes[role.what].store].name == "G_C_10.000" ? 70 : 0;
    } else if (role.kind == ColumnKind::kUnmet) {
      value = problem.orders[role.what].width == 60 ? 1 : 0;
    }
  }
  return space.planOf(values);
}

TEST(ReelNeighbourhood, DeliversARollThatMakesManyOthersDearer) {
  const Planned mill(importText(dearRollMill()));
  const ReelSpace space(mill.problem, mill.lp);
  const ReelPlan plan = planWithoutTheRoll(space);
  expectPlan(space, plan);
  EXPECT_EQ(plan.unmet, 1);
  EXPECT_NEAR(plan.cost, 140, kTolerance);
  const NeighbourhoodResult result = ReelNeighbourhood(space, plan, space.reels()).search({});
  ASSERT_TRUE(result.plan);
  expectPlan(space, *result.plan);
  EXPECT_NEAR(result.plan->unmet, 0, kTolerance);
  EXPECT_NEAR(result.plan->cost, 1041, kTolerance);
  EXPECT_TRUE(result.isOptimal);
}

TEST(PlanWholeReels, DeliversARollThatMakesManyOthersDearer) {
  const Planned mill(importText(dearRollMill()));
  const ReelSpace space(mill.problem, mill.lp);
  LinearSolver solver(mill.lp.model());
  const LinearSolution optimum = TwoSteps(mill.problem, mill.lp, solver, {}).solve();
  const auto whole = planWholeReels(space, optimum, {}, tellNobody);
  ASSERT_TRUE(whole);
  EXPECT_NEAR(whole->plan.unmet, 0, kTolerance);
  EXPECT_NEAR(whole->plan.cost, 1041, kTolerance);
}

// The better plan has a reel more or less of each pattern: 6, 1 and 1 in place of 7, 0 and 0.
TEST(ReelNeighbourhood, KeepsToItsSpan) {
  const Planned mill(importText(dearRollMill()));
  const ReelSpace space(mill.problem, mill.lp);
  const ReelPlan plan = planWithoutTheRoll(space);
  EXPECT_TRUE(ReelNeighbourhood(space, plan, space.reels(), 1).search({}).plan);
  EXPECT_FALSE(ReelNeighbourhood(space, plan, space.reels(), 0).search({}).plan);
}

// 7 reels for 75 rolls of 10 inches and one of 60: with 7 reels of tens 5 + 1 stay unmet, with 6 of
// them and one of 60 it would be 15. The van is dearer and stays at home.
TEST(ReelNeighbourhood, KeepsTheLeastUnmetWhileItSaves) {
  TestMill small = dearRollMill();
  small.cutters.pop_back();
  small.rates.pop_back();
  small.rates.push_back({"North", "A", "Van", 3.0, 0.0});
  small.orders[0].rolls = 75;
  const Planned mill(importText(small));
  const ReelSpace space(mill.problem, mill.lp);
  ReelPlan plan = space.planOf(std::vector<double>(space.costs().size()));
  for (const int column : mill.lp.unmetColumns()) {
    const auto at = static_cast<std::size_t>(column);
    plan.values[at] = mill.lp.model().upper[at];
  }
  plan = space.planOf(plan.values);
  EXPECT_EQ(plan.unmet, 76);
  const NeighbourhoodResult result = ReelNeighbourhood(space, plan, space.reels()).search({});
  ASSERT_TRUE(result.plan);
  expectPlan(space, *result.plan);
  EXPECT_NEAR(result.plan->unmet, 6, kTolerance);
  EXPECT_NEAR(result.plan->cost, 7 * 10 + 70 * 1, kTolerance);
}

TEST(DiveForReels, EndsInAPlanOfWholeReels) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    SCOPED_TRACE(seed);
    const RandomReels mill(seed, 4);
    for (const DiveOptions &options :
         {DiveOptions{0, 0}, DiveOptions{0.5, 0}, DiveOptions{1, 0}, DiveOptions{1, 0.3}}) {
      const std::optional<ReelPlan> plan = diveForReels(mill.space, options, never);
      ASSERT_TRUE(plan);
      expectPlan(mill.space, *plan);
    }
  }
}

// There is time for 3.5 reels: 1.9 for 19 rolls, which 2 take, and of the others' 1.6 then 1.
TEST(DiveForReels, RoundsNoReelUpThatTheMachineHasNoTimeFor) {
  TestMill small = smallMill();
  small.cutters = {{"North",
                    "C",
                    "G",
                    100.0,
                    0.5,
                    1.0,
                    {std::vector<double>(10, 10.0), std::vector<double>(10, 9.5)}}};
  small.orders = {{"G", "A", 10.0, 0, 19}, {"G", "A", 9.5, 0, 16}};
  small.rates = {{"North", "A", "Truck", 1.0, 0.0}};
  const Planned mill(importText(small));
  const ReelSpace space(mill.problem, mill.lp);
  const std::optional<ReelPlan> plan = diveForReels(space, {0, 0}, never);
  ASSERT_TRUE(plan);
  expectPlan(space, *plan);
  EXPECT_NEAR(plan->unmet, 6, kTolerance);
}

TEST(DiveForReels, EndsWithoutAPlanWhenItIsOver) {
  const RandomReels mill(1, 3);
  EXPECT_FALSE(diveForReels(mill.space, {}, [] { return true; }));
}

// Both within a thousandth of the bound that they prove.
TEST(PlanWholeReels, FindsAPlanAsGoodAsTheBestOfASmallMill) {
  for (unsigned seed = 0; seed < 4; ++seed) {
    SCOPED_TRACE(seed);
    const RandomReels mill(seed, 2);
    const WholeAnswer best = solveWhole(wholeModel(mill.space), {.nodes = 3000, .gap = 1e-3});
    const auto whole =
        planWholeReels(mill.space, mill.optimum, {.seconds = 10, .gap = 1e-3}, tellNobody);
    ASSERT_TRUE(best.isFound && whole);
    expectPlan(mill.space, whole->plan);
    const double objective = whole->plan.cost + 1e5 * whole->plan.unmet;
    EXPECT_LE(objective, best.cost * (1 + 2.1e-3));
  }
}

TEST(PlanWholeReels, EndsAtItsGap) {
  const RandomReels mill(5, 4);
  const auto whole =
      planWholeReels(mill.space, mill.optimum, {.seconds = 0, .gap = 1e9}, tellNobody);
  ASSERT_TRUE(whole);
  EXPECT_EQ(whole->way, "dive");
}

TEST(PlanWholeReels, IsNothingWithoutTime) {
  const RandomReels mill(5, 2);
  EXPECT_FALSE(planWholeReels(mill.space, mill.optimum, {.seconds = 1e-9}, tellNobody));
}

class ReelNeighbourhoodTest : public testing::Test {
 protected:
  ReelNeighbourhoodTest() : mill_(11, 4), plan_(*diveForReels(mill_.space, {}, never)) {}

  std::vector<int> reelsOf(Index period) const {
    std::vector<int> reels;
    for (const int column : mill_.space.reels()) {
      if (mill_.lp.column(column).period == period) {
        reels.push_back(column);
      }
    }
    return reels;
  }

  RandomReels mill_;
  ReelPlan plan_;
};

TEST_F(ReelNeighbourhoodTest, KeepsTheReelsThatAreNotFree) {
  ReelPlan plan = plan_;
  for (int round = 0; round < 2; ++round) {
    for (const Index period : {0U, 1U}) {
      const ReelNeighbourhood part(mill_.space, plan, reelsOf(period));
      const NeighbourhoodResult result = part.search({.nodes = 500});
      if (!result.plan) {
        continue;
      }
      expectPlan(mill_.space, *result.plan);
      EXPECT_TRUE(isBetter(*result.plan, plan));
      for (const int column : reelsOf(1 - period)) {
        const auto at = static_cast<std::size_t>(column);
        EXPECT_EQ(result.plan->values[at], plan.values[at]);
      }
      plan = *result.plan;
    }
  }
}

}  // namespace

}  // namespace corvane::plan
