#include "plan/reel_anneal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "plan/linear_solver.h"
#include "plan/mill_text.h"
#include "plan/planned.h"
#include "plan/random_reels.h"
#include "plan/reel_dive.h"
#include "plan/roll_flow.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

constexpr double kRoundingError = 1e-5;
constexpr double kPenalty = 700;

// The least cost of all but the reels, with so many of each.
double leastCost(const ReelSpace &space, const std::vector<double> &reels) {
  LinearModel model = space.model();
  for (std::size_t column = 0; column < model.cost.size(); ++column) {
    model.cost[column] += kPenalty * space.unmetWeights()[column];
  }
  for (const int column : space.reels()) {
    const auto at = static_cast<std::size_t>(column);
    model.lower[at] = reels[at];
    model.upper[at] = reels[at];
    model.cost[at] = 0;
  }
  for (double &upper : model.rowUpper) {  // machines have time for any
    upper = upper > 0 && upper < 100 ? 1e6 : upper;
  }
  for (int row = 0; row < model.rows(); ++row) {
    if (space.lp().row(row).kind != RowKind::kMachine) {
      model.rowUpper[static_cast<std::size_t>(row)] =
          space.model().rowUpper[static_cast<std::size_t>(row)];
    }
  }
  LinearSolver solver(model);
  const LinearSolution solution = solver.solve(Method::kDual);
  EXPECT_EQ(solution.status, Status::kOptimal);
  return solution.objective;
}

// Reels that come and go at random; the reels by column.
class RollFlowTest : public testing::TestWithParam<unsigned> {
 protected:
  RollFlowTest()
      : mill_(GetParam(), 3, GetParam() % 2 == 1),
        space_(mill_.space),
        flow_(space_, kPenalty),
        random_(GetParam()),
        reels_(space_.costs().size()) {}

  int anyColumn() { return space_.reels()[random_() % space_.reels().size()]; }
  void change(int column, double count) {
    count > 0 ? flow_.add(column, count) : flow_.remove(column, -count);
    reels_[static_cast<std::size_t>(column)] += count;
  }
  void comeAndGo() {
    const int column = anyColumn();
    const double there = reels_[static_cast<std::size_t>(column)];
    change(column, there > 0 && random_() % 3 > 0 ? -1 : 1 + static_cast<double>(random_() % 3));
  }
  double cost() const { return flow_.cost(); }

  RandomReels mill_;
  const ReelSpace &space_;
  RollFlow flow_;
  std::mt19937 random_;
  std::vector<double> reels_;
};

TEST_P(RollFlowTest, CostsAsLittleAsTheLinearProgramme) {
  EXPECT_NEAR(cost(), leastCost(space_, reels_), kRoundingError);
  for (int round = 0; round < 40; ++round) {
    comeAndGo();
    flow_.commit();
    ASSERT_NEAR(cost(), leastCost(space_, reels_), kRoundingError) << round;
  }
}

TEST_P(RollFlowTest, TakesBackWhatIsNotCommitted) {
  for (int round = 0; round < 20; ++round) {
    comeAndGo();
    flow_.commit();
    const double before = cost();
    const std::vector<double> reels = reels_;
    comeAndGo();
    comeAndGo();
    flow_.rollBack();
    reels_ = reels;
    ASSERT_NEAR(cost(), before, kRoundingError);
  }
  comeAndGo();
  EXPECT_NEAR(cost(), leastCost(space_, reels_), kRoundingError);
}

// What a swap costs is at least its bound, and where one reel comes to a mill without surplus or
// undelivered rolls of its widths it is no more.
TEST_P(RollFlowTest, BoundsWhatASwapCosts) {
  int tight = 0;
  for (int round = 0; round < 60; ++round) {
    comeAndGo();
    flow_.commit();
    const int more = anyColumn();
    int less = anyColumn();
    less = reels_[static_cast<std::size_t>(less)] > 0 ? less : -1;
    const double bound = flow_.boundOfSwap(more, less);
    const double before = cost();
    flow_.add(more, 1);
    if (less >= 0) {
      flow_.remove(less, 1);
    }
    ASSERT_LE(bound, cost() - before + kRoundingError) << round;
    tight += bound > cost() - before - kRoundingError ? 1 : 0;
    flow_.rollBack();
  }
  EXPECT_GE(tight, 20);
}

TEST_P(RollFlowTest, WritesWhatKeepsEveryRow) {
  for (int round = 0; round < 15; ++round) {
    comeAndGo();
  }
  std::vector<double> values = reels_;
  flow_.write(values);
  double cost = 0;
  std::vector<double> sums(static_cast<std::size_t>(space_.model().rows()));
  for (int column = 0; column < space_.model().columns(); ++column) {
    const auto at = static_cast<std::size_t>(column);
    for (std::size_t i = 0; i < space_.rowsOf(column).size(); ++i) {
      sums[static_cast<std::size_t>(space_.rowsOf(column)[i])] +=
          space_.entriesOf(column)[i] * values[at];
    }
    if (space_.lp().column(column).kind != ColumnKind::kReels) {
      EXPECT_GE(values[at], -kRoundingError);
      EXPECT_LE(values[at], space_.model().upper[at] + kRoundingError);
      cost += values[at] * (space_.costs()[at] + kPenalty * space_.unmetWeights()[at]);
    }
  }
  EXPECT_NEAR(cost, this->cost(), kRoundingError);
  for (int row = 0; row < space_.model().rows(); ++row) {
    if (space_.lp().row(row).kind != RowKind::kMachine) {
      EXPECT_NEAR(sums[static_cast<std::size_t>(row)],
                  space_.model().rowUpper[static_cast<std::size_t>(row)], kRoundingError);
    }
  }
}

TEST_P(RollFlowTest, StartsAnewWithAnotherPenalty) {
  comeAndGo();
  flow_.restart(2 * kPenalty);
  const double nothing = cost();
  flow_.restart(kPenalty);
  EXPECT_NEAR(2 * cost(), nothing, kRoundingError);
  EXPECT_NEAR(cost(), leastCost(space_, std::vector<double>(reels_.size())), kRoundingError);
}

INSTANTIATE_TEST_SUITE_P(Mills, RollFlowTest, testing::Range(0U, 8U));

class ReelAnnealTest : public testing::TestWithParam<unsigned> {
 protected:
  ReelAnnealTest()
      : mill_(GetParam(), 3), space_(mill_.space), start_(*diveForReels(space_, {1, 0}, never)) {}

  ReelPlan annealed(const AnnealOptions &options) const {
    return ReelAnneal(space_, mill_.optimum).run(start_, options, never);
  }

  RandomReels mill_;
  const ReelSpace &space_;
  ReelPlan start_;
};

TEST_P(ReelAnnealTest, KeepsEveryRowAndMachine) {
  const ReelPlan plan = annealed({.moves = 20000, .heat = 0.5});
  std::vector<double> sums(static_cast<std::size_t>(space_.model().rows()));
  for (int column = 0; column < space_.model().columns(); ++column) {
    const double value = plan.values[static_cast<std::size_t>(column)];
    EXPECT_GE(value, -kRoundingError);
    for (std::size_t i = 0; i < space_.rowsOf(column).size(); ++i) {
      sums[static_cast<std::size_t>(space_.rowsOf(column)[i])] +=
          space_.entriesOf(column)[i] * value;
    }
  }
  for (int row = 0; row < space_.model().rows(); ++row) {
    const auto at = static_cast<std::size_t>(row);
    EXPECT_GE(sums[at], space_.model().rowLower[at] - kRoundingError);
    EXPECT_LE(sums[at], space_.model().rowUpper[at] + kRoundingError);
  }
  for (const int column : space_.reels()) {
    const double reels = plan.values[static_cast<std::size_t>(column)];
    EXPECT_EQ(reels, std::round(reels));
  }
  const ReelPlan again = space_.planOf(plan.values);
  EXPECT_EQ(plan.cost, again.cost);
  EXPECT_EQ(plan.unmet, again.unmet);
}

TEST_P(ReelAnnealTest, IsTheSameEveryTime) {
  EXPECT_EQ(annealed({.moves = 5000}).values, annealed({.moves = 5000}).values);
}

TEST_P(ReelAnnealTest, EndsWhenItIsOver) {
  int asked = 0;
  ReelAnneal(space_, mill_.optimum).run(start_, {.moves = 1e12}, [&] { return ++asked == 3; });
  EXPECT_EQ(asked, 3);
}

INSTANTIATE_TEST_SUITE_P(Mills, ReelAnnealTest, testing::Range(0U, 6U));

// On one machine a cutter of 100 inches makes 5 reels a day with 10 inches of trim, one of 90
// makes 2 without. The slow one would be cheaper for all 30 reels and may have no more than the 7
// days.
TEST(ReelAnneal, KeepsToTheDaysOfAMachineWithCuttersOfTwoSpeeds) {
  TestMill mill = smallMill();
  mill.cutters = {{"North", "C", "G", 100.0, 5.0, 2.0, {{50, 40}}},
                  {"North", "C", "G", 90.0, 2.0, 2.0, {{50, 40}}}};
  mill.orders = {{"G", "A", 50.0, 0, 30}, {"G", "A", 40.0, 0, 30}};
  mill.rates = {{"North", "A", "Truck", 1.0, 0.0}};
  const Planned planned(importText(mill));
  const ReelSpace space(planned.problem, planned.lp);
  LinearSolver solver(planned.lp.model());
  const LinearSolution optimum = TwoSteps(planned.problem, planned.lp, solver, {}).solve();
  const ReelPlan start = *diveForReels(space, {1, 0}, never);
  const ReelPlan plan = ReelAnneal(space, optimum).run(start, {.moves = 20000, .heat = 1}, never);
  double days = 0;
  double reels = 0;
  for (const int column : space.reels()) {
    const double made = plan.values[static_cast<std::size_t>(column)];
    days += made * space.entriesOf(column).front();
    reels += made;
  }
  EXPECT_EQ(plan.unmet, 0);
  EXPECT_EQ(reels, 30);
  EXPECT_LE(days, 7 + kRoundingError);
  EXPECT_GT(days, 6.8);  // 3 slow reels and 27 quick ones
}

// While it is hot the plan is mostly worse than what it began with, and it ends there.
TEST_P(ReelAnnealTest, GivesTheBestPlanAndNotTheLast) {
  double surplus = 0;
  int stores = 0;
  for (int column = 0; column < space_.model().columns(); ++column) {
    if (space_.lp().column(column).kind == ColumnKind::kSurplus) {
      surplus += space_.costs()[static_cast<std::size_t>(column)];
      ++stores;
    }
  }
  int asked = 0;
  const ReelPlan plan =
      ReelAnneal(space_, mill_.optimum).run(start_, {.moves = 1e12, .heat = 10}, [&] {
        return ++asked == 4;
      });
  const double roll = 2 * surplus / stores;  // what an undelivered one costs at first
  EXPECT_LE(plan.cost + roll * plan.unmet, start_.cost + roll * start_.unmet + kRoundingError);
}

// Two dozen mills together, from what a dive leaves.
TEST(ReelAnneal, MakesPlansBetter) {
  double before = 0;
  double after = 0;
  double bound = 0;
  for (unsigned seed = 0; seed < 24; ++seed) {
    const RandomReels mill(seed, 3);
    const ReelPlan start = *diveForReels(mill.space, {1, 0}, never);
    const ReelPlan plan =
        ReelAnneal(mill.space, mill.optimum).run(start, {.moves = 40000, .heat = 0.2}, never);
    const ReelPlan best = isBetter(plan, start) ? plan : start;
    EXPECT_LE(best.unmet, start.unmet + kRoundingError);
    if (std::fabs(best.unmet - start.unmet) < kRoundingError) {
      before += start.cost;
      after += best.cost;
      bound += mill.space.planOf(mill.optimum.primal).cost;
    }
  }
  EXPECT_GT(before, bound);
  EXPECT_LT(after - bound, 0.8 * (before - bound));
}

}  // namespace

}  // namespace corvane::plan
