#include "plan/unmet_reasons.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plan/mill_text.h"
#include "plan/planned.h"

namespace corvane::plan {
namespace {

// C and D can each make what is ordered in the second period.
TestMill twoMills() {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.cutters[0].patterns = {{50, 50}};
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.rates.push_back({"South", "A", "Truck", 25.0, 0.0});
  mill.orders = {{"G", "A", 50.0, 1, 140}};
  return mill;
}

TEST(UnmetReasons, OneIdleMachineIsEnoughForWholeReelsToBeTheReason) {
  const Planned planned(importText(twoMills()));
  Plan plan = planned.record.plan;  // C is full, D idle
  plan.unmet[1] = 3;
  explainUnmet(planned.problem, plan);
  EXPECT_EQ(plan.reasons[1], Reason::kWholeReels);
  for (double &reels : plan.reels) {
    reels = 70;
  }
  plan.reasons[1] = Reason::kMet;
  explainUnmet(planned.problem, plan);
  EXPECT_EQ(plan.reasons[1], Reason::kMachineTime);
}

TEST(UnmetReasons, WhereStockMayBeKeptEarlierPeriodsCanMakeIt) {
  const std::string text = importText(twoMills());
  const Planned tight(text);
  EXPECT_EQ(possibleMakers(tight.problem, tight.problem.orders[0], 1).size(), 2U);
  const Planned free(text, {.freeStock = true});
  EXPECT_EQ(possibleMakers(free.problem, free.problem.orders[0], 1).size(), 4U);
}

}  // namespace
}  // namespace corvane::plan
