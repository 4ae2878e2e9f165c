#include "plan/whole_reels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "network/network_reader.h"
#include "plan/linear_solver.h"
#include "plan/mill_model.h"
#include "plan/reel_dive.h"
#include "plan/reel_neighbourhood.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

constexpr double kTolerance = 1e-6;

// A random mill with all patterns of at most so many rolls, and the LP of its plan.
struct WholeMill {
  WholeMill(unsigned seed, int limit)
      : mill(seed),
        network(network::readNetworkText(
            mill.model().importFile(allPatterns("G", mill.deckle(), mill.widths(), limit)))),
        problem(makeProblem(network, {})),
        lp(problem),
        space(problem, lp) {
    LinearSolver solver(lp.model());
    optimum = TwoSteps(problem, lp, solver, {}).solve();
  }

  RandomMill mill;
  Network network;
  PlanProblem problem;
  CompactLp lp;
  ReelSpace space;
  LinearSolution optimum;
};

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
  EXPECT_NEAR(plan.objective, space.objectiveOf(plan.values), kTolerance);
}

LinearModel wholeModel(const ReelSpace &space) {
  LinearModel model = space.model();
  model.cost = space.costs();
  for (const int column : space.reels()) {
    model.whole[static_cast<std::size_t>(column)] = 1;
  }
  return model;
}

bool never() {
  return false;
}

void tellNobody(const std::string & /*way*/, double /*gap*/) {}

TEST(ReelSpace, LetsNoRollBeTradedForMoney) {
  const WholeMill mill(3, 3);
  const int unmet = mill.lp.unmetColumns().front();
  const double penalty = mill.space.costs()[static_cast<std::size_t>(unmet)];
  for (const int column : mill.space.reels()) {
    EXPECT_GT(penalty, mill.space.costs()[static_cast<std::size_t>(column)]);
  }
}

TEST(DiveForReels, EndsInAPlanOfWholeReels) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    SCOPED_TRACE(seed);
    const WholeMill mill(seed, 4);
    for (const double reserve : {0.0, 0.5, 1.0}) {
      const std::optional<ReelPlan> plan = diveForReels(mill.space, reserve, never);
      ASSERT_TRUE(plan);
      expectPlan(mill.space, *plan);
    }
  }
}

TEST(DiveForReels, EndsWithoutAPlanWhenItIsOver) {
  const WholeMill mill(1, 3);
  EXPECT_FALSE(diveForReels(mill.space, 0.5, [] { return true; }));
}

// Both within a thousandth of the bound that they prove.
TEST(PlanWholeReels, FindsAPlanAsGoodAsTheBestOfASmallMill) {
  for (unsigned seed = 0; seed < 4; ++seed) {
    SCOPED_TRACE(seed);
    const WholeMill mill(seed, 2);
    const WholeAnswer best = solveWhole(wholeModel(mill.space), {.nodes = 3000, .gap = 1e-3});
    const auto whole =
        planWholeReels(mill.space, mill.optimum, {.seconds = 10, .gap = 1e-3}, tellNobody);
    ASSERT_TRUE(best.isFound && whole);
    expectPlan(mill.space, whole->plan);
    EXPECT_LE(whole->plan.objective, best.cost * (1 + 2.1e-3));
  }
}

TEST(PlanWholeReels, EndsAtItsGap) {
  const WholeMill mill(5, 4);
  const auto whole =
      planWholeReels(mill.space, mill.optimum, {.seconds = 0, .gap = 1e9}, tellNobody);
  ASSERT_TRUE(whole);
  EXPECT_EQ(whole->way, "dive");
}

TEST(PlanWholeReels, IsNothingWithoutTime) {
  const WholeMill mill(5, 2);
  EXPECT_FALSE(planWholeReels(mill.space, mill.optimum, {.seconds = 1e-9}, tellNobody));
}

class ReelNeighbourhoodTest : public testing::Test {
 protected:
  ReelNeighbourhoodTest() : mill_(11, 4), plan_(*diveForReels(mill_.space, 1.0, never)) {}

  std::vector<int> reelsOf(Index period) const {
    std::vector<int> reels;
    for (const int column : mill_.space.reels()) {
      if (mill_.lp.column(column).period == period) {
        reels.push_back(column);
      }
    }
    return reels;
  }

  WholeMill mill_;
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
      EXPECT_LT(result.plan->objective, plan.objective);
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
