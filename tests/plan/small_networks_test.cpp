// Networks small enough to be solved by hand.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "plan/mill_text.h"
#include "plan/planned.h"
#include "plan/unmet_reasons.h"

namespace corvane::plan {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kNear = 1e-7;

std::vector<std::string> kindsOf(const PlanRecord &record) {
  std::vector<std::string> kinds;
  for (const network::Warning &warning : record.warnings) {
    kinds.push_back(warning.kind);
  }
  return kinds;
}

// Ten reels of 50 + 50: 10 x 10 to feed them, no trim, 20 rolls at 5.
TEST(SmallNetworks, OneOrderIsCutAndShipped) {
  const Planned planned(importText(smallMill()));
  const Totals &totals = planned.record.totals;
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.warnings, IsEmpty());
  EXPECT_THAT(totals.reels, DoubleNear(10, kNear));
  EXPECT_THAT(totals.cost.feed, DoubleNear(100, kNear));
  EXPECT_THAT(totals.cost.waste, DoubleNear(0, kNear));
  EXPECT_THAT(totals.cost.freight, DoubleNear(100, kNear));
  EXPECT_THAT(totals.deliveredRolls, DoubleNear(20, kNear));
  EXPECT_THAT(totals.deckleInches, DoubleNear(1000, kNear));
}

// Rolls of 60 come with rolls of 30 that nobody ordered and 10 inches of trim: 7 reels pay
// 7 x 10 x 2 for trim and 7 x 30 x 2 for the surplus.
TEST(SmallNetworks, RollsThatNobodyOrderedCostAsTrim) {
  TestMill mill = smallMill();
  mill.orders = {{"G", "A", 60.0, 0, 7}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.surplusRolls, DoubleNear(7, kNear));
  EXPECT_THAT(planned.record.totals.cost.surplus, DoubleNear(420, kNear));
  EXPECT_THAT(planned.record.totals.cost.waste, DoubleNear(140, kNear));
}

// A train takes one period: the order of the first one is out of reach, that of the second leaves
// in the first. A truck would cost more and is there for one customer alone.
TEST(SmallNetworks, WhatIsUnderWayArrivesLater) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.orders = {{"G", "A", 50.0, 0, 6}, {"G", "A", 50.0, 1, 8}};
  mill.rates = {{"North", "A", "Rail", 1.0, 1.0}};
  const Planned planned(importText(mill));
  const Plan &plan = planned.record.plan;
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(plan.unmet, ElementsAre(6, 0));
  EXPECT_EQ(plan.reasons[0], Reason::kTooEarly);
  EXPECT_THAT(planned.record.totals.unmetOutOfReach, DoubleNear(6, kNear));
  EXPECT_THAT(plan.ships, ElementsAre(8, 0));
  EXPECT_THAT(kindsOf(planned.record), ElementsAre("out-of-reach", "late-departures"));
}

TEST(SmallNetworks, APartOfAPeriodCountsAsAWholeOne) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.orders = {{"G", "A", 50.0, 1, 8}};
  mill.rates = {{"North", "A", "Rail", 1.0, 0.25}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.plan.ships, ElementsAre(8, 0));
  EXPECT_THAT(kindsOf(planned.record), testing::Contains("delay-rounded"));
}

// Two mills: the near one costs 1 a roll and makes 70 reels in its days, which is 140 rolls; the
// other 60 of 200 come from afar at 9.
TEST(SmallNetworks, TheDearMillMakesWhatTheCheapOneCannot) {
  TestMill mill = smallMill();
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.orders = {{"G", "A", 50.0, 0, 200}};
  mill.rates = {{"North", "A", "Truck", 1.0, 0.0}, {"South", "A", "Barge", 9.0, 0.0}};
  mill.cutters[0].patterns = {{50, 50}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.cost.freight, DoubleNear(140 + 60 * 9, 1e-6));
  EXPECT_THAT(usedDays(planned.problem, planned.record.plan),
              ElementsAre(DoubleNear(7, kNear), DoubleNear(3, kNear)));
}

// 70 reels of 2 rolls for 200: 60 stay unmet, for want of the machine in that period.
TEST(SmallNetworks, AFullMachineLeavesDemandUnmet) {
  TestMill mill = smallMill();
  mill.orders = {{"G", "A", 50.0, 0, 200}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.plan.unmet, ElementsAre(DoubleNear(60, kNear)));
  EXPECT_EQ(planned.record.plan.reasons[0], Reason::kMachineTime);
  EXPECT_THAT(possibleMakers(planned.problem, planned.problem.orders[0], 0),
              ElementsAre(MachineTime{0, 0}));
  EXPECT_THAT(planned.record.totals.shortageCost, DoubleNear(60 * 50000.0, 1e-2));
}

// Least unmet goes before cost, whatever it costs: waste at 100,000 an inch is dearer than 50,000.
TEST(SmallNetworks, WasteThatCostsMoreThanAShortageIsPaid) {
  TestMill mill = smallMill();
  mill.cutters[0].wasteCost = 1e5;
  mill.cutters[0].patterns = {{60, 30}};
  mill.orders = {{"G", "A", 60.0, 0, 3}, {"G", "A", 30.0, 0, 3}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(0, kNear));
  EXPECT_THAT(planned.record.totals.cost.waste, DoubleNear(3e6, 1e-3));
}

TEST(SmallNetworks, TheFirstReasonThatHoldsIsTold) {
  TestMill mill = smallMill();
  mill.orders = {{"G", "Nobody", 50.0, 0, 5}, {"G", "A", 44.0, 0, 5}};
  Planned planned(importText(mill));
  EXPECT_THAT(planned.record.plan.reasons, ElementsAre(Reason::kNoRoute, Reason::kNoPattern));
  EXPECT_EQ(planned.lp.orderRow(0, 0), -1);  // a solver is not asked
  mill = smallMill();
  mill.cutters[0].capacity = 0.0;
  const Planned idle(importText(mill));
  EXPECT_THAT(idle.record.plan.reasons, ElementsAre(Reason::kNoCapacity));
  EXPECT_THAT(idle.record.plan.unmet, ElementsAre(20));
  EXPECT_THAT(kindsOf(idle.record), ElementsAre("no-capacity", "out-of-reach"));
}

// A pattern of 60 + 50 cannot be cut out of 100; it is the only one of 60.
TEST(SmallNetworks, APatternWiderThanItsDeckleIsLeftOut) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns = {{60, 50}, {50, 50}};
  mill.orders = {{"G", "A", 60.0, 0, 4}, {"G", "A", 50.0, 0, 4}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.plan.reasons, ElementsAre(Reason::kNoPattern, Reason::kMet));
  EXPECT_THAT(kindsOf(planned.record), ElementsAre("pattern-too-wide", "out-of-reach"));
  const Planned kept(importText(mill), {.keepImpossible = true});
  EXPECT_THAT(kept.record.totals.unmetRolls, DoubleNear(0, kNear));
  EXPECT_THAT(kept.record.faults, IsEmpty());
}

TEST(SmallNetworks, BatchesPassTheirReelsOn) {
  TestMill mill = smallMill();
  mill.batch = true;
  const Planned planned(importText(mill));
  EXPECT_TRUE(planned.network.batch);
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.cost.feed, DoubleNear(100, kNear));
}

TEST(SmallNetworks, WithoutDelaysRollsGoStraightToTheOrder) {
  TestMill mill = smallMill();
  mill.delay = false;
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.cost.freight, DoubleNear(100, kNear));
  EXPECT_EQ(planned.problem.routes[0].mode, "direct");
}

// 140 rolls of 50 a week, 280 ordered for the second: with stock, half of them are made in the
// first.
TEST(SmallNetworks, StockBuildsAheadOfATightWeek) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.cutters[0].patterns = {{50, 50}};
  mill.orders = {{"G", "A", 50.0, 1, 280}};
  const std::string text = importText(mill);
  EXPECT_THAT(Planned(text).record.totals.unmetRolls, DoubleNear(140, kNear));
  const Planned planned(text, {.freeStock = true});
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.plan.stock, ElementsAre(DoubleNear(140, kNear), 0));
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(0, kNear));
}

// Both mills write the node of the mode; the line of the second one holds for both, so nothing
// arrives in the first period, unless each mill keeps its own.
TEST(SmallNetworks, OneDelayNodeHasTheDelayThatWasWrittenLast) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.orders = {{"G", "A", 50.0, 0, 5}};
  mill.rates = {{"North", "A", "Rail", 1.0, 0.0}, {"South", "A", "Rail", 1.0, 1.0}};
  const std::string text = importText(mill);
  const Planned planned(text);
  EXPECT_THAT(planned.record.plan.unmet, ElementsAre(5, 0));
  EXPECT_THAT(kindsOf(planned.record), testing::Contains("delay-differs"));
  const Planned byMill(text, {.delaysByMill = true});
  EXPECT_THAT(byMill.record.faults, IsEmpty());
  EXPECT_THAT(byMill.record.totals.unmetRolls, DoubleNear(0, kNear));
}

// Only the South cuts the width, and its goods arrive a period late, whatever the North's do.
TEST(SmallNetworks, ByMillEachMillKeepsItsOwnDelay) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{40, 40}}});
  mill.orders = {{"G", "A", 40.0, 0, 5}, {"G", "A", 40.0, 1, 3}};
  mill.rates = {{"South", "A", "Rail", 1.0, 1.0}, {"North", "A", "Rail", 1.0, 0.0}};
  const Planned byMill(importText(mill), {.delaysByMill = true});
  EXPECT_THAT(byMill.record.faults, IsEmpty());
  EXPECT_THAT(byMill.record.plan.unmet, ElementsAre(DoubleNear(5, kNear), DoubleNear(0, kNear)));
}

// One name for two machines is one machine with the days of one: 140 rolls of 200.
TEST(SmallNetworks, AMachineOfTwoMillsHasItsTimeOnce) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns = {{50, 50}};
  mill.cutters.push_back({"South", "C", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.orders = {{"G", "A", 50.0, 0, 200}};
  mill.rates.push_back({"South", "A", "Truck", 7.0, 0.0});
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(60, kNear));
  EXPECT_THAT(planned.record.totals.cost.freight, DoubleNear(140 * 7, 1e-6));
  EXPECT_THAT(kindsOf(planned.record), ElementsAre("machine-shared", "cost-replaced"));
}

std::string refusalOf(const TestMill &mill) {
  try {
    const Planned planned(importText(mill));
  } catch (const network::Refused &refused) {
    return refused.what();
  }
  return "";
}

TEST(SmallNetworks, ACustomerNamedLikeACutterIsRefused) {
  TestMill mill = smallMill();
  mill.orders = {{"G", "C", 50.0, 0, 5}};
  mill.rates = {{"North", "C", "Truck", 1.0, 0.0}};
  EXPECT_THAT(refusalOf(mill), HasSubstr("a customer has the name of a cutter"));
}

TEST(SmallNetworks, ACostThatIsNoNumberToTheSolverIsRefused) {
  TestMill mill = smallMill();
  mill.rates.front().cost = 1e19;
  EXPECT_EQ(refusalOf(mill), "");
  mill.rates.front().cost = 1e21;
  EXPECT_THAT(refusalOf(mill), HasSubstr("costs more than 1e20"));
}

TEST(SmallNetworks, TwoRecipesUnderOneNameAreRefused) {
  TestMill mill = smallMill();
  mill.cutters.push_back({"South", "C", "G", 100.2, 10.0, 2.0, {{50, 50}}});
  EXPECT_THAT(refusalOf(mill), HasSubstr("another recipe"));
}

TEST(SmallNetworks, WidthsAlikeInThreeDecimalsAreRefused) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns = {{1.0001, 1.0002}};
  mill.orders = {{"G", "A", 1.0001, 0, 5}, {"G", "A", 1.0002, 0, 5}};
  EXPECT_THAT(refusalOf(mill), HasSubstr("two widths are alike in their names"));
}

// 1234.56 and 1234.561 are one commodity but two stores: the rolls of a pattern may go to both.
TEST(SmallNetworks, WidthsAlikeInSixDigitsAreOneCommodity) {
  TestMill mill = smallMill();
  mill.cutters[0].deckle = 2500;
  mill.cutters[0].patterns = {{1234.561, 1234.56}};
  mill.orders = {{"G", "A", 1234.56, 0, 3}, {"G", "A", 1234.561, 0, 9}};
  std::string text = importText(mill);
  const Planned planned(text);
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.reels, DoubleNear(6, kNear));
  EXPECT_THAT(planned.record.totals.surplusRolls, DoubleNear(0, kNear));
  EXPECT_THAT(kindsOf(planned.record), ElementsAre("commodity-twice"));
}

// What stands for the first period alone (feed, waste, days, freight) holds in the second; the 20
// rolls that were ordered for the first do not. The 12 of the second take 6 reels: 6 x 10 of feed
// and 12 x 5 of freight, in the days that the first period has.
TEST(SmallNetworks, DataCarryOverButAmountsDoNot) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.orders.push_back({"G", "A", 50.0, 1, 12});
  const std::string text = importText(mill);
  std::string kept;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const bool isOfSecond = line.find("<period> \"2\"") != std::string::npos;
    const bool isAmount = line.find("<demandamount>") != std::string::npos;
    kept += isOfSecond && !isAmount ? "" : line + '\n';
  }
  ASSERT_LT(kept.size(), text.size() - 500);
  const Planned planned(kept);
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.orderedRolls, DoubleNear(32, kNear));
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(0, kNear));
  EXPECT_THAT(planned.record.totals.cost.feed, DoubleNear(100 + 60, kNear));
  EXPECT_THAT(planned.record.totals.cost.freight, DoubleNear(100 + 60, kNear));
  EXPECT_THAT(usedDays(planned.problem, planned.record.plan),
              ElementsAre(DoubleNear(1, kNear), DoubleNear(0.6, kNear)));
}

// Data of the second period alone hold in the first, too: 7 days that make 70 reels.
TEST(SmallNetworks, TheFirstDataHoldForThePeriodsBeforeThem) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.orders[0].rolls = 200;
  std::string text = importText(mill);
  const std::string days =
      "addnode <type> \"Machine\" <name> \"M_C\" <x> 10 <y> 210 <period> \"1\"";
  const std::size_t at = text.find(days);
  ASSERT_NE(at, std::string::npos);
  text.replace(at, days.size(), days.substr(0, days.size() - 3) + "\"2\"");
  const Planned planned(text);
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(60, kNear));
}

// Without data of its own the third period has those of the second, 3 days that make 30 reels, and
// neither those of the first, 7 days, nor those of the fourth, 1 day.
TEST(SmallNetworks, APeriodWithoutDataHasThoseOfTheLastOneBeforeIt) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2", "3", "4"};
  mill.orders[0].period = 2;
  mill.orders[0].rolls = 200;
  std::string kept;
  std::istringstream lines(importText(mill));
  for (std::string line; std::getline(lines, line);) {
    const auto isMachineIn = [&](const std::string &period) {
      return line.find("addnode <type> \"Machine\"") == 0 &&
             line.find("<period> \"" + period + "\"") != std::string::npos;
    };
    if (isMachineIn("3")) {
      continue;
    }
    if (const std::size_t at = line.find("<max> 7 "); isMachineIn("2") || isMachineIn("4")) {
      ASSERT_NE(at, std::string::npos);
      line.replace(at, 7, isMachineIn("2") ? "<max> 3" : "<max> 1");
    }
    kept += line + '\n';
  }
  const Planned planned(kept);
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.problem.machines[0].days, ElementsAre(7, 3, 3, 1));
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(200 - 2 * 30, kNear));
}

// Rolls of 60 fall off the reels that are made for 7 rolls of 30: the store has reels of two
// cutters, at 3 and 2 an inch of waste, and the dearer counts. 7 x 60 x 3.
TEST(SmallNetworks, SurplusCostsTheDearestWasteOfItsStore) {
  TestMill mill = smallMill();
  mill.cutters = {{"North", "C", "G", 120.0, 10.0, 3.0, {{60, 50}}},
                  {"North", "C", "G", 100.0, 10.0, 2.0, {{60, 30}}}};
  mill.orders = {{"G", "A", 30.0, 0, 7}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.cost.surplus, DoubleNear(7 * 60 * 3, 1e-6));
  EXPECT_THAT(planned.record.totals.cost.waste, DoubleNear(7 * 10 * 2, 1e-6));
}

// 60 + 50 out of 100 cannot be, but where the file says that an inch is left over it holds.
TEST(SmallNetworks, APatternWithTrimFitsItsDeckle) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns = {{60, 50}};
  std::string text = importText(mill);
  const std::string none = "<commodity> \"Waste\" <in> False <quantity> 0";
  const std::size_t at = text.find(none);
  ASSERT_NE(at, std::string::npos);
  text.replace(at, none.size(), none.substr(0, none.size() - 1) + '1');
  const Planned planned(text);
  EXPECT_TRUE(planned.problem.patterns[0].possible);
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(0, kNear));
}

// Three quarters of a period count as one; a train of 1.25 takes two and arrives in the third.
TEST(SmallNetworks, GoodsNeverArriveEarly) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2", "3"};
  mill.orders = {{"G", "A", 50.0, 1, 4}, {"G", "A", 50.0, 2, 8}};
  mill.rates = {{"North", "A", "Rail", 1.0, 1.25}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.plan.ships, ElementsAre(DoubleNear(8, kNear), 0, 0));
  EXPECT_THAT(planned.record.plan.unmet, ElementsAre(0, 4, 0));
}

// Of two modes the dear one is taken where the cheap one comes too late: 6 by truck at 9 in the
// first period, 8 by rail at 1 for the second.
TEST(SmallNetworks, EachOrderTakesTheCheapestModeThatArrivesInTime) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.orders = {{"G", "A", 50.0, 0, 6}, {"G", "A", 50.0, 1, 8}};
  mill.rates = {{"North", "A", "Rail", 1.0, 1.0}, {"North", "A", "Truck", 9.0, 0.0}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  EXPECT_THAT(planned.record.totals.unmetRolls, DoubleNear(0, kNear));
  EXPECT_THAT(planned.record.totals.cost.freight, DoubleNear(6 * 9 + 8 * 1, kNear));
}

// 70 reels for 140 rolls of 50 by twos and 90 of 30 by threes: narrow ones come first, for rolls
// are counted and not inches.
TEST(SmallNetworks, ShortOfTimeTheMostRollsAreDelivered) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns = {{50, 50}, {30, 30, 30}};
  mill.orders = {{"G", "A", 50.0, 0, 140}, {"G", "A", 30.0, 0, 90}};
  const Planned planned(importText(mill));
  EXPECT_THAT(planned.record.faults, IsEmpty());
  // 30 reels of three and 40 of two: 90 and 80 rolls.
  EXPECT_THAT(planned.record.plan.unmet, ElementsAre(DoubleNear(60, kNear), DoubleNear(0, kNear)));
}

TEST(SmallNetworks, NothingOrderedIsAnEmptyPlan) {
  TestMill mill = smallMill();
  mill.orders.clear();
  mill.cutters.clear();
  mill.periods.clear();
  const Planned planned(importText(mill));
  EXPECT_EQ(planned.record.totals.orderedRolls, 0);
  EXPECT_THAT(planned.record.faults, IsEmpty());
}

}  // namespace
}  // namespace corvane::plan
