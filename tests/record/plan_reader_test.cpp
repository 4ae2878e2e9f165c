#include "record/plan_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "record/example_record.h"
#include "record/record_check.h"

namespace corvane::record {
namespace {

using testing::HasSubstr;

Record WithoutPlan() {
  Record record = exampleRecord();
  record.plan.reset();
  return record;
}

// A plan with one thing of every list.
QByteArray Json() {
  return R"({"schema": "corvane-plan/1", "periods": ["1", "2"],
    "options": {"storage": "file", "whole_reels": true},
    "solver": {"lp_cost": 90.5},
    "warnings": [{"line": 12, "kind": "late", "text": "nothing leaves"}],
    "advice": [{"kind": "patterns", "text": "raise occur min"}],
    "faults": [],
    "totals": {"cost": {"feed": 10, "waste": 20, "freight": 60, "machine_time": 1, "surplus": 2,
               "total": 93}},
    "machines": [{"machine": "M_W1", "period": "2", "used": 0.5, "available": 7}],
    "patterns": [{"pattern": "A_Pattern_1_W1_100", "period": "2", "reels": 3, "offered": false}],
    "orders": [{"order": "A_Yew_30", "period": "1", "demand": 9, "delivered": 7, "unmet": 2,
                "reason": "machine-time", "full": [{"machine": "M_W1", "period": "1"}]}],
    "shipments": [{"mode": "Rail", "from": "A_W1_30.000", "to": "A_Yew_30", "leaves": "1",
                   "arrives": "2", "rolls": 7, "cost": 60}],
    "surplus": [{"store": "A_W1_30.000", "period": "2", "rolls": 1}],
    "stock": [{"store": "A_W1_40.000", "period": "1", "rolls": 4}]})";
}

std::string FaultOf(QByteArray json, const char *before, const char *after) {
  Record record = WithoutPlan();
  QString fault;
  EXPECT_FALSE(readPlan(record, json.replace(before, after), fault));
  return fault.toStdString();
}

TEST(PlanReader, TakesEveryListByTheNamesOfTheRecord) {
  Record record = WithoutPlan();
  QString fault;
  ASSERT_TRUE(readPlan(record, Json(), fault)) << fault.toStdString();
  EXPECT_EQ(faultOf(record), QString());
  const Plan &plan = *record.plan;
  EXPECT_TRUE(plan.wholeReels);
  EXPECT_EQ(plan.totalCost, 93);
  EXPECT_EQ(plan.boundCost, 90.5);
  EXPECT_EQ(plan.cost[0].name, QStringLiteral("freight"));
  EXPECT_EQ(plan.cost[0].value, 60);
  EXPECT_EQ(plan.warnings[0].line, 12);
  EXPECT_EQ(plan.advice[0].text, QStringLiteral("raise occur min"));
  EXPECT_EQ(plan.machineTime[0].period, 1);
  EXPECT_EQ(plan.machineTime[0].used, 0.5);
  EXPECT_EQ(plan.reels[0].pattern, 1);
  EXPECT_EQ(plan.reels[0].reels, 3);
  EXPECT_EQ(plan.deliveries[0].order, 2);
  EXPECT_EQ(plan.deliveries[0].unmet, 2);
  EXPECT_EQ(plan.modes, QStringList(QStringLiteral("Rail")));
  EXPECT_EQ(plan.shipments[0].arrives, 1);
  EXPECT_EQ(plan.surplus[0].store, 1);
  EXPECT_EQ(plan.stock[0].rolls, 4);
  EXPECT_FALSE(plan.flows.empty());
}

TEST(PlanReader, TellsWhyInWords) {
  Record record = WithoutPlan();
  QString fault;
  ASSERT_TRUE(readPlan(record, Json(), fault));
  EXPECT_EQ(record.plan->deliveries[0].reason,
            QStringLiteral("the machines that could make it in time are full: W1 in period 1"));
}

TEST(PlanReader, PatternsThatThePlanOffersAreAdded) {
  Record record = WithoutPlan();
  QString fault;
  ASSERT_TRUE(readPlan(
      record,
      Json().replace("\"pattern\": \"A_Pattern_1_W1_100\", \"period\": \"2\", \"reels\": 3, "
                     "\"offered\": false",
                     "\"pattern\": \"x\", \"cutter\": \"A_W1_100\", \"period\": \"2\", \"reels\": "
                     "3, \"rolls\": {\"20\": 1, \"40\": 2}, \"trim\": 0, \"offered\": true"),
      fault))
      << fault.toStdString();
  EXPECT_EQ(faultOf(record), QString());
  ASSERT_EQ(record.patterns.size(), 5U);
  EXPECT_EQ(record.patterns[4].rolls, (std::vector<std::pair<double, int>>{{40, 2}, {20, 1}}));
  EXPECT_EQ(record.plan->reels[0].pattern, 4);
}

TEST(PlanReader, APlanOfAnotherFileIsRefused) {
  EXPECT_THAT(FaultOf(Json(), "A_Pattern_1_W1_100", "A_Pattern_9_W1_100"),
              HasSubstr("\"A_Pattern_9_W1_100\", which is not in the import file"));
  EXPECT_THAT(FaultOf(Json(), "M_W1", "M_W9"), HasSubstr("\"W9\""));
  EXPECT_THAT(FaultOf(Json(), "\"leaves\": \"1\"", "\"leaves\": \"7\""), HasSubstr("\"7\""));
}

TEST(PlanReader, WhatIsNoPlanAndAWrongPlanAreRefused) {
  EXPECT_THAT(FaultOf(Json(), "corvane-plan/1", "corvane-run/1"), HasSubstr("corvane-run/1"));
  EXPECT_NE(FaultOf("{", "x", "x"), "");
  EXPECT_THAT(FaultOf(Json(), "\"faults\": []", "\"faults\": [\"store 3\"]"), HasSubstr("store 3"));
}

}  // namespace
}  // namespace corvane::record
