#include "plan/network_pricing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "network/network_reader.h"
#include "plan/mill_text.h"

namespace corvane::plan {

namespace {

// Ten reels a day of 100 inches for seven days, waste at 2 an inch, feed at 10 a reel; rolls of 50,
// 60 and 30.
class PricingOnANetwork : public testing::Test {
 protected:
  PricingOnANetwork()
      : network_(network::readNetworkText(importText(smallMill()))),
        problem_(makeProblem(network_, {})),
        lp_(problem_),
        menus_(cutterMenus(network_, problem_)),
        duals_(static_cast<std::size_t>(lp_.model().rows()), 0.0) {}

  void setWorth(double width, double worth) {
    for (Index store = 0; store < problem_.stores.size(); ++store) {
      if (problem_.stores[store].width == width) {
        duals_[static_cast<std::size_t>(lp_.storeRow(store, 0))] = worth;
      }
    }
  }
  PricingRound price(PlanStep step, int disjoint, int limit = 5) const {
    return pricePatterns({network_, problem_, lp_, menus_, limit}, duals_, step, disjoint);
  }

  Network network_;
  PlanProblem problem_;
  CompactLp lp_;
  std::vector<CutterMenu> menus_;
  std::vector<double> duals_;
};

TEST_F(PricingOnANetwork, FindsTheLeastReducedCost) {
  setWorth(50, 200);
  setWorth(30, 100);
  const PricingRound round = price(PlanStep::kCost, 1);
  ASSERT_EQ(round.patterns.size(), 1U);
  const NewPattern &pattern = round.patterns[0].pattern;
  ASSERT_EQ(pattern.rolls.size(), 1U);
  EXPECT_EQ(problem_.stores[pattern.rolls[0].store].width, 50);
  EXPECT_EQ(pattern.rolls[0].count, 2);
  EXPECT_EQ(pattern.trim, 0);
  EXPECT_NEAR(round.patterns[0].reducedCost, 10 - 400, 1e-9);
  EXPECT_NEAR(round.mostGain, 390 * 10 * 7, 1e-6);
}

// Feed and waste are no part of it.
TEST_F(PricingOnANetwork, LooksAtRollsAloneWhereTheyAreUnmet) {
  setWorth(60, 1);
  duals_[static_cast<std::size_t>(lp_.machineRow(0, 0))] = -4;
  const PricingRound round = price(PlanStep::kUnmet, 1);
  ASSERT_EQ(round.patterns.size(), 1U);
  EXPECT_EQ(round.patterns[0].pattern.trim, 40);
  EXPECT_NEAR(round.patterns[0].reducedCost, 0.4 - 1, 1e-9);
  EXPECT_NEAR(round.mostGain, 0.6 * 10 * 7, 1e-6);
}

TEST_F(PricingOnANetwork, AsksForPatternsWithoutACommonWidth) {
  setWorth(50, 300);
  setWorth(60, 290);
  setWorth(30, 280);
  const PricingRound round = price(PlanStep::kCost, 8, 1);
  ASSERT_EQ(round.patterns.size(), 3U);
  std::set<Index> stores;
  for (const PricedPattern &priced : round.patterns) {
    for (const NewPattern::Rolls &rolls : priced.pattern.rolls) {
      EXPECT_TRUE(stores.insert(rolls.store).second);
    }
  }
  EXPECT_EQ(price(PlanStep::kCost, 2, 1).patterns.size(), 2U);
  EXPECT_NEAR(price(PlanStep::kCost, 2, 1).mostGain, round.mostGain, 1e-6);
}

TEST_F(PricingOnANetwork, FindsNothingWhereRollsAreWorthNoMoreThanTheyCost) {
  const PricingRound round = price(PlanStep::kCost, 8);
  EXPECT_TRUE(round.patterns.empty());
  EXPECT_EQ(round.mostGain, 0);
}

TEST(WrittenTrim, HasSixDigitsAndNoNoise) {
  EXPECT_EQ(writtenTrim(19.9999754), 20);
  EXPECT_EQ(writtenTrim(33.33333334), 33.3333);
  EXPECT_EQ(writtenTrim(1e-9), 0);
  EXPECT_EQ(writtenTrim(-1e-9), 0);
  EXPECT_EQ(writtenTrim(1e-7), 1e-7);
}

}  // namespace

}  // namespace corvane::plan
