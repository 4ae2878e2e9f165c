// Every kind of warning that a plan has, and a file that gives it alone.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "plan/mill_text.h"
#include "plan/planned.h"

namespace corvane::plan {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> kindsOf(const std::string &text) {
  std::vector<std::string> kinds;
  for (const network::Warning &warning : Planned(text).record.warnings) {
    kinds.push_back(warning.kind);
  }
  return kinds;
}

// The only warning of a text; kind, line and words.
network::Warning warningOf(const std::string &text) {
  const Planned planned(text);
  EXPECT_EQ(planned.record.warnings.size(), 1U);
  EXPECT_TRUE(planned.record.faults.empty());
  return planned.record.warnings.empty() ? network::Warning{} : planned.record.warnings.front();
}

std::string replaced(std::string text, const std::string &old, const std::string &now) {
  const std::size_t at = text.find(old);
  EXPECT_NE(at, std::string::npos) << old;
  return at == std::string::npos ? text : text.replace(at, old.size(), now);
}

network::Index lineOf(const std::string &text, const std::string &part) {
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(text.find(part));
  return static_cast<network::Index>(1 + std::count(text.begin(), end, '\n'));
}

TestMill twoPeriods() {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  return mill;
}

// Two mills with a cutter of one name.
TestMill twins() {
  TestMill mill = smallMill();
  mill.cutters.push_back(mill.cutters[0]);
  mill.cutters[1].mill = "South";
  mill.rates.push_back({"South", "A", "Truck", 5.0, 0.0});
  return mill;
}

TEST(Warnings, AGoodMillHasNone) {
  EXPECT_THAT(kindsOf(importText(smallMill())), testing::IsEmpty());
}

TEST(Warnings, OutOfReach) {
  TestMill mill = smallMill();
  mill.orders.push_back({"G", "Nobody", 50.0, 0, 3});
  const std::string text = importText(mill);
  const network::Warning warning = warningOf(text);
  EXPECT_EQ(warning.kind, "out-of-reach");
  EXPECT_EQ(warning.line, lineOf(text, "\"G_Nobody_50.000\" <x>"));
  EXPECT_THAT(warning.text, HasSubstr("3 rolls of \"G_Nobody_50.000\" in period 1"));
}

TEST(Warnings, LateDepartures) {
  TestMill mill = twoPeriods();
  mill.rates.push_back({"North", "A", "Rail", 1.0, 1.0});
  const network::Warning warning = warningOf(importText(mill));
  EXPECT_EQ(warning.kind, "late-departures");
  EXPECT_THAT(warning.text, HasSubstr("nothing leaves by \"Rail\" in the last 1 period,"));
}

TEST(Warnings, DelayRounded) {
  TestMill mill = twoPeriods();
  mill.rates.push_back({"North", "A", "Rail", 1.0, 0.25});
  EXPECT_THAT(kindsOf(importText(mill)), ElementsAre("delay-rounded", "late-departures"));
}

TEST(Warnings, DelayDiffers) {
  TestMill mill = twoPeriods();
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.rates.push_back({"South", "A", "Truck", 1.0, 1.0});
  EXPECT_THAT(kindsOf(importText(mill)),
              ElementsAre("out-of-reach", "late-departures", "delay-differs"));
}

TEST(Warnings, MachineShared) {
  const network::Warning warning = warningOf(importText(twins()));
  EXPECT_EQ(warning.kind, "machine-shared");
  EXPECT_THAT(warning.text, HasSubstr("\"M_C\""));
}

TEST(Warnings, CostReplaced) {
  TestMill mill = twins();
  mill.rates.back().cost = 8;
  EXPECT_THAT(kindsOf(importText(mill)), ElementsAre("machine-shared", "cost-replaced"));
}

// The later capacity holds: 7 days of 3 reels make 42 rolls.
TEST(Warnings, CapacityReplaced) {
  TestMill mill = twins();
  mill.cutters[1].capacity = 3;
  mill.orders[0].rolls = 50;
  const Planned planned(importText(mill));
  EXPECT_NEAR(planned.record.totals.unmetRolls, 8, 1e-7);
  EXPECT_THAT(kindsOf(importText(mill)), ElementsAre("machine-shared", "capacity-replaced"));
}

TEST(Warnings, ValueReplaced) {
  const std::string order = "<name> \"G_A_50.000\" <undercost> 50000 <storagemax> 0 <period> \"1\"";
  const std::string text = importText(smallMill());
  const std::string other = replaced(text, order, replaced(order, "50000", "40000"));
  const network::Warning warning = warningOf(other);
  EXPECT_EQ(warning.kind, "value-replaced");
  EXPECT_EQ(warning.line, lineOf(text, order));
  EXPECT_THAT(warning.text, HasSubstr("is 40000 here and was 50000"));
}

TEST(Warnings, AmountTwice) {
  TestMill mill = smallMill();
  mill.orders.push_back({"G", "A", 50.0, 0, 7});
  const std::string text = importText(mill);
  EXPECT_EQ(warningOf(text).kind, "amount-twice");
  EXPECT_NEAR(Planned(text).record.totals.orderedRolls, 7, 1e-9);
}

TEST(Warnings, CommodityTwice) {
  TestMill mill = smallMill();
  mill.cutters[0].deckle = 2500;
  mill.cutters[0].patterns = {{1234.561, 1234.56}};
  mill.orders = {{"G", "A", 1234.56, 0, 3}, {"G", "A", 1234.561, 0, 9}};
  EXPECT_EQ(warningOf(importText(mill)).kind, "commodity-twice");
}

TEST(Warnings, PatternTooWide) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns.push_back({60, 60});
  const network::Warning warning = warningOf(importText(mill));
  EXPECT_EQ(warning.kind, "pattern-too-wide");
  EXPECT_THAT(warning.text, HasSubstr("cuts 120 inches out of 100"));
}

// Rolls of 30 of the second pattern have no way to a store.
TEST(Warnings, PatternStopped) {
  const std::string text = importText(smallMill());
  const std::size_t arc =
      text.find("addarc <commodity> \"DemandWidth30\" <from> \"G_Pattern_1_C_100\"");
  ASSERT_NE(arc, std::string::npos);
  const std::string without = text.substr(0, arc) + text.substr(text.find('\n', arc) + 1);
  const network::Warning warning = warningOf(without);
  EXPECT_EQ(warning.kind, "pattern-stopped");
  EXPECT_EQ(warning.line, lineOf(text, "<name> \"G_Pattern_1_C_100\""));
}

TEST(Warnings, NoWidths) {
  const std::string text = importText(smallMill());
  const std::string trim =
      "addattach <node> \"G_Pattern_1_C_100\" <commodity> \"Waste\" <in> False";
  const std::string none =
      "addattach <node> \"G_Pattern_1_C_100\" <commodity> \"DemandWidth0\" <in> False "
      "<quantity> 0\n";
  EXPECT_EQ(warningOf(replaced(text, trim, none + trim)).kind, "no-widths");
}

TEST(Warnings, NoCapacity) {
  TestMill mill = smallMill();
  mill.cutters.push_back({"North", "D", "G", 90.0, 0.0, 2.0, {{50}}});
  EXPECT_EQ(warningOf(importText(mill)).kind, "no-capacity");
}

TEST(Warnings, NegativeCostOfTrimAndOfFreight) {
  TestMill mill = smallMill();
  mill.cutters[0].wasteCost = -1;
  EXPECT_THAT(warningOf(importText(mill)).text, HasSubstr("trim is a gain"));
  mill = smallMill();
  mill.rates[0].cost = -1;
  const network::Warning warning = warningOf(importText(mill));
  EXPECT_EQ(warning.kind, "negative-cost");
  EXPECT_THAT(warning.text, HasSubstr("freight of 1 route costs less than 0"));
}

TEST(Warnings, PeriodOrder) {
  TestMill mill = smallMill();
  mill.periods = {"10", "9"};
  const network::Warning warning = warningOf(importText(mill));
  EXPECT_EQ(warning.kind, "period-order");
  EXPECT_THAT(warning.text, HasSubstr("\"10\" before \"9\""));
}

}  // namespace
}  // namespace corvane::plan
