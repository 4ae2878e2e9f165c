#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "record/example_record.h"
#include "record/record_check.h"
#include "record/record_reader.h"
#include "record/record_writer.h"

namespace corvane::record {
namespace {

using testing::HasSubstr;

std::string FaultOf(const QByteArray &json) {
  QString fault;
  EXPECT_FALSE(fromJson(json, fault).has_value());
  return fault.toStdString();
}

Record Read(const QByteArray &json) {
  QString fault;
  const std::optional<Record> record = fromJson(json, fault);
  EXPECT_TRUE(record.has_value()) << fault.toStdString();
  return record.value_or(Record());
}

TEST(RecordJson, WhatIsWrittenReadsBackToTheSameBytes) {
  const QByteArray json = toJson(exampleRecord());
  EXPECT_EQ(toJson(Read(json)).toStdString(), json.toStdString());
}

TEST(RecordJson, ReadsTheValuesOfEveryKind) {
  const Record record = Read(toJson(exampleRecord()));
  EXPECT_EQ(record.log.seed, 7);
  EXPECT_EQ(record.orders[0].customer, QStringLiteral("Zed <& Sons>"));
  EXPECT_EQ(record.patterns[0].rolls[0], (std::pair<double, int>(40, 2)));
  EXPECT_EQ(record.network.arcs[3], (std::vector<int>{3, 7, 9, 15}));
  ASSERT_TRUE(record.plan.has_value());
  EXPECT_EQ(record.plan->reels[4].reels, 1.5);
  EXPECT_EQ(record.plan->deliveries[5].unmet, 2);
  EXPECT_EQ(record.plan->boundCost, 1015);
}

TEST(RecordJson, ARecordWithoutAPlanSaysNull) {
  Record record = exampleRecord();
  record.plan.reset();
  record.log.seed.reset();
  const QByteArray json = toJson(record);
  const QJsonObject object = QJsonDocument::fromJson(json).object();
  EXPECT_TRUE(object.value(QStringLiteral("plan")).isNull());
  EXPECT_FALSE(Read(json).plan.has_value());
  EXPECT_FALSE(Read(json).log.seed.has_value());
}

TEST(RecordJson, HoldsNoSignThatCouldEndAScript) {
  const QByteArray json = toJson(exampleRecord());
  EXPECT_FALSE(json.contains('<'));
  EXPECT_THAT(json.toStdString(), HasSubstr("Zed \\u003c& Sons>"));
}

TEST(RecordJson, BlanksStandInTextsAlone) {
  Record record = exampleRecord();
  record.name = QStringLiteral("a \\\" b");
  const QByteArray json = toJson(record);
  EXPECT_EQ(Read(json).name, record.name);
  EXPECT_THAT(json.toStdString(), HasSubstr("[\"A_Pattern_0_W1_100\",0,0,[[40,2],[20,1]]]"));
  EXPECT_FALSE(json.contains("\": "));
}

TEST(RecordJson, ItsSchemaIsTold) {
  const QJsonObject object = QJsonDocument::fromJson(toJson(Record())).object();
  EXPECT_EQ(object.value(QStringLiteral("schema")).toString(), QStringLiteral("corvane-run/1"));
}

TEST(RecordJson, WhatIsNoRecordIsRefusedWithTheReason) {
  EXPECT_NE(FaultOf("{\"schema\":"), "");
  EXPECT_THAT(FaultOf("{\"schema\":\"corvane-plan/1\"}"), HasSubstr("corvane-plan/1"));
  EXPECT_THAT(FaultOf("[]"), HasSubstr("schema"));
}

TEST(RecordJson, UnknownMembersArePassedOverAndMissingOnesKeepTheirDefaults) {
  const Record record = Read("{\"schema\":\"corvane-run/1\",\"later\":[1],\"name\":\"x\"}");
  EXPECT_EQ(record.name, QStringLiteral("x"));
  EXPECT_TRUE(record.patterns.empty());
}

TEST(RecordJson, AValueOfAnotherKindIsRefusedByItsKey) {
  EXPECT_THAT(FaultOf("{\"schema\":\"corvane-run/1\",\"periods\":3}"), HasSubstr("\"periods\""));
  EXPECT_THAT(FaultOf("{\"schema\":\"corvane-run/1\",\"patterns\":[[\"a\",0]]}"),
              HasSubstr("\"patterns\""));
  EXPECT_THAT(FaultOf("{\"schema\":\"corvane-run/1\",\"network\":{\"arcs\":[[0.5]]}}"),
              HasSubstr("\"arcs\""));
}

TEST(RecordCheck, TheExampleIsWhole) {
  EXPECT_EQ(faultOf(exampleRecord()), QString());
}

// Every index of the record, led astray one at a time.
TEST(RecordCheck, AnIndexThatLeadsNowhereIsAFault) {
  const std::vector<void (*)(Record &)> strays = {
      [](Record &r) { r.cutters[0].machine = 1; },
      [](Record &r) { r.stores[0].cutter = -1; },
      [](Record &r) { r.orders[0].rolls.pop_back(); },
      [](Record &r) { r.seen[0].rolls.push_back(1); },
      [](Record &r) { r.patterns[3].cutter = 2; },
      [](Record &r) { r.network.groups[0].places.pop_back(); },
      [](Record &r) { r.network.groups[5].names.pop_back(); },
      [](Record &r) { r.network.arcs[2][1] = 17; },
      [](Record &r) { r.plan->reels[0].pattern = 4; },
      [](Record &r) { r.plan->reels[0].period = 2; },
      [](Record &r) { r.plan->machineTime[0].machine = 1; },
      [](Record &r) { r.plan->machineTime[0].period = -1; },
      [](Record &r) { r.plan->deliveries[0].order = 4; },
      [](Record &r) { r.plan->deliveries[0].period = 2; },
      [](Record &r) { r.plan->shipments[0].mode = 1; },
      [](Record &r) { r.plan->shipments[0].store = 4; },
      [](Record &r) { r.plan->shipments[0].order = 4; },
      [](Record &r) { r.plan->shipments[0].leaves = -1; },
      [](Record &r) { r.plan->shipments[0].arrives = 2; },
      [](Record &r) { r.plan->surplus[0].store = 4; },
      [](Record &r) { r.plan->surplus[0].period = 2; },
      [](Record &r) { r.plan->flows[0].from = -1; },
      [](Record &r) { r.plan->flows[0].to = 17; },
  };
  for (std::size_t i = 0; i < strays.size(); ++i) {
    Record record = exampleRecord();
    strays[i](record);
    EXPECT_NE(faultOf(record), QString()) << i;
    FaultOf(toJson(record));
  }
}

}  // namespace
}  // namespace corvane::record
