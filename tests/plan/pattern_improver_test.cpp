#include "plan/pattern_improver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "network/network_reader.h"
#include "plan/compact_lp.h"
#include "plan/linear_solver.h"
#include "plan/mill_model.h"
#include "plan/mill_names.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

using testing::HasSubstr;

struct Optimum {
  double unmet = 0;  // rolls, with those out of reach
  double cost = 0;
};

Optimum optimumOf(const PlanProblem &problem) {
  const CompactLp lp(problem);
  LinearSolver solver(lp.model());
  TwoSteps steps(problem, lp, solver, {});
  Optimum optimum;
  optimum.cost = steps.solve().objective;
  optimum.unmet = steps.leastUnmet();
  for (const Order &order : problem.orders) {
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      optimum.unmet += order.reach[period] == Reason::kMet ? 0 : order.demand[period];
    }
  }
  return optimum;
}

PlanProblem problemOf(const std::string &importFile) {
  return makeProblem(network::readNetworkText(importFile), {});
}

void expectNear(const Optimum &optimum, const Optimum &expected) {
  EXPECT_NEAR(optimum.unmet, expected.unmet, 1e-6 * (1 + expected.unmet));
  EXPECT_NEAR(optimum.cost, expected.cost, 1e-6 * (1 + expected.cost));
}

void expectFits(const Pattern &pattern, double deckle, int limit) {
  double rolls = 0;
  double inches = 0;
  for (const Yield &yield : pattern.yields) {
    rolls += yield.rolls;
    inches += yield.rolls * yield.width;
  }
  EXPECT_LE(rolls, limit);
  EXPECT_LE(inches, deckle + 1e-9);
  EXPECT_NEAR(inches + pattern.trim, deckle, 1e-3);
}

// Started from one poor pattern, it ends where all patterns there are would.
TEST(ImprovePatterns, ReachesTheOptimumOfAllPatterns) {
  constexpr int kLimit = 4;
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    RandomMill mill(seed);
    const MillModel model = mill.model();
    Network network =
        network::readNetworkText(model.importFile({{"G", mill.deckle(), {mill.widths().back()}}}));
    PlanProblem problem = makeProblem(network, {});
    const std::size_t patterns = problem.patterns.size();
    const ImproveReport report =
        improvePatterns(network, problem, {}, {.limit = kLimit}, [](const ImproveReport &) {
        }).report;
    EXPECT_TRUE(report.isComplete);
    EXPECT_EQ(static_cast<std::size_t>(report.patterns), problem.patterns.size() - patterns);
    EXPECT_NEAR(report.costBound, report.cost, 1e-6 * (1 + report.cost));
    const Optimum best = optimumOf(
        problemOf(model.importFile(allPatterns("G", mill.deckle(), mill.widths(), kLimit))));
    expectNear(optimumOf(problem), best);
    expectNear(optimumOf(makeProblem(network, {})), best);
    for (const Pattern &pattern : problem.patterns) {
      expectFits(pattern, mill.deckle(), kLimit);
    }
  }
}

// Widths of more digits than the file has, and a deckle that they fill only as they are.
class ExactMill : public testing::Test {
 protected:
  static constexpr double kWide = 33.33333333;

  ExactMill()
      : model_("M1,W1,G,100,50,2,1.5\n",
               "1,G,33.33333333,300,A\n1,G,16.66666666,30,A\n2,G,16.66666666,10,A\n",
               "A,M1,Road,50,0\n"),
        network_(network::readNetworkText(model_.importFile({{"G", 100, {kWide}}}))),
        problem_(makeProblem(network_, {})) {}

  ImproveReport improve(const ImproveOptions &options) {
    const MillNames names(model_.inputs());
    std::vector<CutterMenu> menus = cutterMenus(network_, problem_);
    names.makeExact(menus, problem_);
    return improvePatterns(network_, problem_, menus, options,
                           [this](const ImproveReport &report) { reports_.push_back(report); })
        .report;
  }

  MillModel model_;
  Network network_;
  PlanProblem problem_;
  std::vector<ImproveReport> reports_;
};

TEST_F(ExactMill, IsSlitToItsOwnWidths) {
  EXPECT_TRUE(improve({.limit = 6}).isComplete);
  double reels = 0;
  const CompactLp lp(problem_);
  LinearSolver solver(lp.model());
  const LinearSolution solution = TwoSteps(problem_, lp, solver, {}).solve();
  for (int column = 0; column < lp.model().columns(); ++column) {
    reels += lp.column(column).kind == ColumnKind::kReels
                 ? solution.primal[static_cast<std::size_t>(column)]
                 : 0;
  }
  EXPECT_NEAR(reels, 100 + 5 + 10 / 6.0, 1e-6);
}

TEST_F(ExactMill, ReadsBackAndSolvesToTheSameCost) {
  improve({.limit = 6});
  const MillNames names(model_.inputs());
  const std::vector<SlitPattern> patterns =
      names.slitPatterns(problem_, std::vector<bool>(problem_.patterns.size(), true));
  EXPECT_EQ(patterns.front().widths.front(), kWide);
  expectNear(optimumOf(problemOf(model_.importFile(patterns))), optimumOf(problem_));
}

TEST_F(ExactMill, WritesThePatternsThatAreKept) {
  improve({.limit = 6});
  std::vector<bool> isKept(problem_.patterns.size(), false);
  isKept.back() = true;
  EXPECT_EQ(MillNames(model_.inputs()).slitPatterns(problem_, isKept).size(), 1U);
}

TEST_F(ExactMill, ReportsEveryRound) {
  const ImproveReport last = improve({.limit = 6});
  ASSERT_EQ(static_cast<int>(reports_.size()), last.rounds);
  EXPECT_LT(last.cost, last.firstCost);
  for (const ImproveReport &report : reports_) {
    EXPECT_FALSE(report.isComplete);
    EXPECT_LE(report.unmetBound, report.unmet);
    EXPECT_TRUE(std::isnan(report.cost) || report.costBound <= last.cost + 1e-6);
  }
}

// A clock that goes on by a minute with every look at it.
std::function<double()> minutes() {
  return [minute = 0]() mutable { return 60.0 * minute++; };
}

TEST_F(ExactMill, KeepsABoundWhenTimeIsUp) {
  const ImproveReport report = improve({.limit = 6, .seconds = 59, .clock = minutes()});
  EXPECT_FALSE(report.isComplete);
  EXPECT_TRUE(report.isTimeUp);
  EXPECT_EQ(report.rounds, 1);
  const double best =
      optimumOf(problemOf(model_.importFile(allPatterns("G", 100, {kWide, 16.66666666}, 6)))).cost;
  EXPECT_LE(report.costBound, best + 1e-6);
  EXPECT_TRUE(std::isfinite(report.costBound));
  EXPECT_GT(report.cost, best + 1);
  EXPECT_LE(report.unmetBound, report.unmet);
}

TEST_F(ExactMill, GoesOnForAsLongAsThereIsTime) {
  const ImproveReport report = improve({.limit = 6, .seconds = 1e4, .clock = minutes()});
  EXPECT_TRUE(report.isComplete);
  EXPECT_FALSE(report.isTimeUp);
  EXPECT_GT(report.rounds, 1);
}

// The plan's solver begins where improving ended.
TEST_F(ExactMill, HandsOverALinearProgrammeAndABasisOfItsOptimum) {
  const Improvement improvement =
      improvePatterns(network_, problem_, {}, {.limit = 6}, [](const ImproveReport &) {});
  LinearSolver solver(improvement.lp.model());
  TwoSteps steps(problem_, improvement.lp, solver, {0, {}, &improvement.basis});
  const LinearSolution solution = steps.solve();
  EXPECT_EQ(solution.iterations, 0);
  EXPECT_NEAR(solution.objective, improvement.report.cost, 1e-6);
  expectNear({steps.leastUnmet(), solution.objective}, optimumOf(problem_));
}

// Two rolls of 30 in a reel are worth less than its waste costs, and there is time for seven reels;
// only the search for the fewest unmet rolls asks for them.
TEST(ImprovePatterns, FindsPatternsThatAreTooDearButDeliverMore) {
  const MillModel model("M1,W1,G,100,1,2,5000\n", "1,G,30,100,A\n", "A,M1,Road,50,0\n");
  Network network = network::readNetworkText(model.importFile({{"G", 100, {30}}}));
  PlanProblem problem = makeProblem(network, {});
  const ImproveReport report =
      improvePatterns(network, problem, {}, {.limit = 2}, [](const ImproveReport &) {}).report;
  EXPECT_TRUE(report.isComplete);
  const Optimum best = optimumOf(problemOf(model.importFile(allPatterns("G", 100, {30}, 2))));
  EXPECT_NEAR(best.unmet, 100 - 2 * 7, 1e-6);
  EXPECT_NEAR(report.unmet, best.unmet, 1e-6);
  EXPECT_NEAR(report.cost, best.cost, 1e-6 * best.cost);
  expectNear(optimumOf(problem), best);
}

// The file says that two rolls leave 20 inches, which is more than they do: pricing would ask for
// that pattern for ever. What that leaves open grows with the machine's time.
ImproveReport improvedWhereTrimIsRoundedUp(const std::string &reelsADay) {
  const MillModel model("M1,W1,G,100," + reelsADay + ",2,1.5\n", "1,G,40.0000123,300,A\n",
                        "A,M1,Road,50,0\n");
  Network network = network::readNetworkText(model.importFile({{"G", 100, {40.0000123}}}));
  PlanProblem problem = makeProblem(network, {});
  std::vector<CutterMenu> menus = cutterMenus(network, problem);
  MillNames(model.inputs()).makeExact(menus, problem);
  return improvePatterns(network, problem, menus, {.limit = 2}, [](const ImproveReport &) {})
      .report;
}

TEST(ImprovePatterns, EndsWhereTheFileRoundsTrimUp) {
  const ImproveReport little = improvedWhereTrimIsRoundedUp("22");
  EXPECT_EQ(little.patterns, 1);
  EXPECT_TRUE(little.isComplete);
  const ImproveReport much = improvedWhereTrimIsRoundedUp("220000");
  EXPECT_EQ(much.patterns, 1);
  EXPECT_FALSE(much.isComplete);
  EXPECT_FALSE(much.isTimeUp);
  EXPECT_LT(much.costBound, much.cost);
}

// Deckles of 100 inches for rolls of 60: the waste of a reel costs four times what its roll does
// while it is not delivered.
TEST(ImprovePatterns, DeliversWhatCostsMoreThanItsUndercost) {
  const MillModel model("M1,W1,G,100,50,2,5000\n", "1,G,60,300,A\n1,G,45,30,A\n",
                        "A,M1,Road,50,0\n");
  Network network = network::readNetworkText(model.importFile({{"G", 100, {60}}}));
  PlanProblem problem = makeProblem(network, {});
  const ImproveReport report =
      improvePatterns(network, problem, {}, {.limit = 3}, [](const ImproveReport &) {}).report;
  EXPECT_TRUE(report.isComplete);
  const Optimum best = optimumOf(problemOf(model.importFile(allPatterns("G", 100, {60, 45}, 3))));
  EXPECT_NEAR(report.cost, best.cost, 1e-6 * best.cost);
  EXPECT_NEAR(report.costBound, best.cost, 1e-6 * best.cost);
  EXPECT_NEAR(report.unmet, best.unmet, 1e-6);
  expectNear(optimumOf(problem), best);
}

TEST_F(ExactMill, RefusesOtherInputs) {
  const MillModel other("M1,W9,G,100,50,2,1.5\n", "1,G,33.33333333,300,A\n", "A,M1,Road,50,0\n");
  std::vector<CutterMenu> menus = cutterMenus(network_, problem_);
  EXPECT_THROW(MillNames(other.inputs()).makeExact(menus, problem_), network::Refused);
}

}  // namespace

}  // namespace corvane::plan
