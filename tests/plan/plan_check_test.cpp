// A plan that does not hold is found out, whatever is wrong with it.

#include "plan/plan_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plan/mill_text.h"
#include "plan/planned.h"

namespace corvane::plan {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

class PlanCheck : public testing::Test {
 protected:
  static TestMill mill() {
    TestMill mill = smallMill();
    mill.periods = {"1", "2"};
    mill.orders = {{"G", "A", 50.0, 1, 20}, {"G", "A", 60.0, 1, 7}};
    mill.rates = {{"North", "A", "Rail", 5.0, 1.0}};
    return mill;
  }

  std::vector<std::string> faults() const {
    return checkPlan(planned_.network, planned_.problem, plan_,
                     sumUp(planned_.network, planned_.problem, plan_));
  }

  Planned planned_{importText(mill())};
  Plan plan_ = planned_.record.plan;
};

TEST_F(PlanCheck, ARightPlanHasNoFaults) {
  EXPECT_THAT(faults(), IsEmpty());
}

TEST_F(PlanCheck, AReelTooManyIsFoundAtTheStore) {
  plan_.reels[0] += 1;
  EXPECT_THAT(faults(), Contains(HasSubstr("at \"G_C_50.000\" in period 1: rolls")));
}

TEST_F(PlanCheck, MoreReelsThanTheMachineHasDaysForAreFound) {
  plan_.reels[0] = 71;
  EXPECT_THAT(faults(), Contains(HasSubstr("at \"M_C\" in period 1: days: 7.8")));
}

TEST_F(PlanCheck, AMissingShipmentIsFoundAtTheOrder) {
  plan_.ships[0] -= 2;
  EXPECT_THAT(faults(), Contains(HasSubstr("demand")));
}

TEST_F(PlanCheck, AShipmentThatArrivesTooLateIsFound) {
  plan_.ships[1] = 3;
  EXPECT_THAT(faults(), Contains(HasSubstr("rolls that arrive too late: 3")));
}

TEST_F(PlanCheck, WhatIsUnmetMustBeToldSo) {
  plan_.unmet[1] = 4;
  EXPECT_THAT(faults(), Contains(HasSubstr("demand: 24 is not 20")));
}

TEST_F(PlanCheck, StockThatMayNotBeKeptIsFound) {
  plan_.stock[0] = 1;
  plan_.surplus[1] = 1;
  EXPECT_THAT(faults(), Contains(HasSubstr("stock: 1 is more than 0")));
}

TEST_F(PlanCheck, RollsThatTheRecipeDoesNotGiveAreFound) {
  planned_.problem.patterns[0].yields[0].rolls += 1;
  EXPECT_THAT(faults(), Contains(HasSubstr("in period 1: recipe")));
}

TEST(PlanCheckOfBatches, ReelsThatGoIntoABatchAndNotOutAreFound) {
  TestMill mill = smallMill();
  mill.batch = true;
  Planned planned(importText(mill));
  ASSERT_THAT(planned.record.faults, IsEmpty());
  ASSERT_EQ(planned.problem.patterns[0].deckleArcs.size(), 2U);
  planned.problem.patterns[0].deckleArcs.pop_back();
  EXPECT_THAT(checkPlan(planned.network, planned.problem, planned.record.plan,
                        sumUp(planned.network, planned.problem, planned.record.plan)),
              Contains(HasSubstr("reels of a batch")));
}

TEST_F(PlanCheck, AFlowBelowZeroIsFound) {
  plan_.surplus[0] = -1;
  EXPECT_THAT(faults(), Contains(HasSubstr("below 0")));
}

TEST_F(PlanCheck, TotalsThatSayAnotherCostAreFound) {
  Totals totals = planned_.record.totals;
  totals.cost.freight += 1;
  EXPECT_THAT(checkPlan(planned_.network, planned_.problem, plan_, totals),
              ElementsAre(HasSubstr("and the totals say")));
  totals = planned_.record.totals;
  totals.trimInches += 1;
  EXPECT_THAT(checkPlan(planned_.network, planned_.problem, plan_, totals),
              ElementsAre(HasSubstr("the paper is")));
}

}  // namespace
}  // namespace corvane::plan
