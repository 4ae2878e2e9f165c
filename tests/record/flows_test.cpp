#include "record/flows.h"

#include <gtest/gtest.h>

#include <map>

#include "record/example_record.h"
#include "record/record_check.h"

namespace corvane::record {
namespace {

std::map<std::pair<int, int>, double> FlowsOf(const Record &record) {
  std::map<std::pair<int, int>, double> flows;
  for (const Flow &flow : flowsOf(record)) {
    flows[{flow.from, flow.to}] = flow.inches;
  }
  return flows;
}

std::map<std::pair<int, int>, double> FlowsIn(const Record &record) {
  std::map<std::pair<int, int>, double> flows;
  for (const Flow &flow : record.plan->flows) {
    flows[{flow.from, flow.to}] = flow.inches;
  }
  return flows;
}

// The flows that the example's author reckoned by hand.
TEST(Flows, CarryDecklesRollsTrimAndShipments) {
  Record record = exampleRecord();
  EXPECT_EQ(FlowsOf(record), FlowsIn(record));
}

TEST(Flows, AModeWithADelayGoesThroughItsNode) {
  Record record = exampleRecord();
  record.network.groups.push_back(
      {QStringLiteral("delay"), {QStringLiteral("Truck_A_Zed_40")}, {910, 0}});
  const auto flows = FlowsOf(record);
  EXPECT_EQ(flows.count({7, 11}), 0U);
  EXPECT_DOUBLE_EQ(flows.at({7, 17}), 1200);
  EXPECT_DOUBLE_EQ(flows.at({17, 11}), 1200);
}

TEST(Flows, ABatchStandsBeforeItsPattern) {
  Record record = exampleRecord();
  record.network.groups.push_back({QStringLiteral("batch"), {QStringLiteral("b")}, {420, 0}});
  record.network.arcs.push_back({17, 3});
  const auto flows = FlowsOf(record);
  EXPECT_EQ(flows.count({1, 3}), 0U);
  EXPECT_DOUBLE_EQ(flows.at({1, 17}), 1500);
  EXPECT_DOUBLE_EQ(flows.at({17, 3}), 1500);
}

TEST(Flows, AnAddedPatternGetsItsNodeAndArcs) {
  Record record = exampleRecord();
  const Pattern pattern{QStringLiteral("new"), 0, {{40, 1}, {30, 2}}, 0};
  addPatternNode(record, pattern);
  record.patterns.push_back(pattern);
  EXPECT_EQ(faultOf(record), QString());
  record.plan->reels = {{4, 0, 10}};
  record.plan->shipments = {{0, 0, 0, 0, 0, 10, 100}};
  const auto flows = FlowsOf(record);
  EXPECT_DOUBLE_EQ(flows.at({0, 1}), 1000);
  EXPECT_DOUBLE_EQ(flows.at({1, 7}), 1000);
  // Stores and orders are one further than before.
  EXPECT_DOUBLE_EQ(flows.at({7, 8}), 400);
  EXPECT_DOUBLE_EQ(flows.at({7, 9}), 600);
  EXPECT_DOUBLE_EQ(flows.at({8, 12}), 400);
}

}  // namespace
}  // namespace corvane::record
