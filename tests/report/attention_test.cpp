#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "record/example_record.h"
#include "report/sections.h"

namespace corvane::report {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

std::vector<std::string> PointsOf(const record::Record &record) {
  const Figures figures = figuresOf(record);
  std::vector<std::string> points;
  for (const Attention &point : attention({record, figures})) {
    points.push_back((point.head + QLatin1Char(' ') + point.text).toStdString());
  }
  return points;
}

// The example without anything to tell: every pattern is used and trims nothing, all is delivered.
record::Record Calm() {
  record::Record record = record::exampleRecord();
  record.log.messages.clear();
  record.findings.clear();
  record.seen[3].rolls[0] = 8;
  record.patterns = {{QStringLiteral("0"), 0, {{40, 2}, {20, 1}}, 0},
                     {QStringLiteral("1"), 1, {{44, 2}}, 0}};
  record.cutters[1].deckle = 88;
  record.network = {};
  record.orders = {record.orders[0], record.orders[1], record.orders[3]};
  record.plan->reels = {{0, 0, 10}, {0, 1, 5}, {1, 0, 4}, {1, 1, 2}};
  record.plan->deliveries = {
      {0, 0, 20, 0, {}}, {0, 1, 10, 0, {}}, {1, 0, 15, 0, {}}, {2, 0, 8, 0, {}}, {2, 1, 4, 0, {}}};
  record.plan->surplus.clear();
  record.plan->shipments.clear();
  record.plan->machineTime[0].used = 5;
  record.log.demandInches = 2028;
  return record;
}

TEST(Attention, WhatIsShortComesFirstWithItsReason) {
  EXPECT_THAT(PointsOf(record::exampleRecord()).front(),
              AllOf(StartsWith("2 rolls are short."), HasSubstr("88 inches"),
                    HasSubstr("machine W1 is full in period 2")));
}

TEST(Attention, WorstFirst) {
  record::Record record = record::exampleRecord();
  // A message of the log is the last that is looked at, and a warning.
  record.log.messages = {QStringLiteral("Warning: something")};
  const Figures figures = figuresOf(record);
  const std::vector<Attention> points = attention({record, figures});
  EXPECT_EQ(points.front().weight, Attention::Weight::kBad);
  EXPECT_EQ(points.back().weight, Attention::Weight::kNote);
  for (std::size_t i = 1; i < points.size(); ++i) {
    EXPECT_LE(points[i - 1].weight, points[i].weight) << points[i].head.toStdString();
  }
}

TEST(Attention, TellsHowMuchOfTheDemandGenerationSaw) {
  EXPECT_THAT(
      PointsOf(record::exampleRecord()),
      Contains(AllOf(StartsWith("Patterns were made for 88.5 %"), HasSubstr("For 1 of 6 groups"),
                     HasSubstr("CV402"), HasSubstr("B, period 1: 25.0 %"))));
}

TEST(Attention, TellsFullMachinesUnusedPatternsSurplusFindingsAndMessages) {
  const std::vector<std::string> points = PointsOf(record::exampleRecord());
  EXPECT_THAT(points, Contains("1 machine has no time left. W1 in period 1."));
  EXPECT_THAT(points, Contains(StartsWith("1 of 4 patterns are not used.")));
  EXPECT_THAT(points, Contains(StartsWith("1 roll is cut that nobody ordered.")));
  EXPECT_THAT(points, Contains(StartsWith("The input files have 0 errors and 1 warning.")));
  EXPECT_THAT(points, Contains(StartsWith("The log has 1 message.")));
}

TEST(Attention, SaysNothingWhereNothingIs) {
  EXPECT_THAT(PointsOf(Calm()), IsEmpty());
}

TEST(Attention, APlanThatDoesNotAddUpIsBad) {
  record::Record record = Calm();
  record.plan->reels[0].reels = 10.0002;
  EXPECT_THAT(PointsOf(record), ElementsAre(AllOf(StartsWith("The plan does not add up."),
                                                  HasSubstr("0.02 inches"))));
  record.plan->reels[0].reels = 10.00005;
  EXPECT_THAT(PointsOf(record), IsEmpty());
}

TEST(Attention, TellsWhereTrimIsFarAboveTheRest) {
  record::Record record = record::exampleRecord();
  record.plan->reels = {{0, 0, 1000}, {1, 1, 5}};
  EXPECT_THAT(PointsOf(record), Contains(AllOf(StartsWith("Trim is highest on A in period 2."),
                                               HasSubstr("10.00 %"))));
}

TEST(Attention, WithoutAPlanItSaysHowToGetOne) {
  record::Record record = record::exampleRecord();
  record.plan.reset();
  EXPECT_THAT(PointsOf(record), Contains(AllOf(StartsWith("There is no plan of this run."),
                                               HasSubstr("corvane-plan"))));
  EXPECT_THAT(PointsOf(record), Not(Contains(HasSubstr("rim is highest"))));
}

TEST(Attention, ARunThatDidNotFinishAndFilesOfTwoRunsAreBad) {
  record::Record record = record::exampleRecord();
  record.log.isComplete = false;
  record.log.demandInches = 2298.02;
  EXPECT_THAT(PointsOf(record), Contains(StartsWith("The run did not finish.")));
  EXPECT_THAT(PointsOf(record), Contains(AllOf(StartsWith("The files are not of one run."),
                                               HasSubstr("2,298.02"), HasSubstr("2,298.00"))));
  record.log.demandInches = 2298.009;
  EXPECT_THAT(PointsOf(record), Not(Contains(StartsWith("The files are not"))));
}

TEST(Attention, WithoutALogThatIsSaid) {
  record::Record record = record::exampleRecord();
  record.log = {};
  EXPECT_THAT(PointsOf(record), Contains(StartsWith("There is no log of this run.")));
}

TEST(Attention, AMachineThatIsFullThroughoutIsToldShortly) {
  record::Record record = record::exampleRecord();
  record.plan->machineTime[1].used = 7;
  EXPECT_THAT(PointsOf(record), Contains("1 machine has no time left. W1 in every period."));
}

TEST(Attention, NamesAreListed) {
  EXPECT_EQ(listed({}), QString());
  EXPECT_EQ(listed({QStringLiteral("1")}), QStringLiteral("1"));
  EXPECT_EQ(listed({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("4")}),
            QStringLiteral("1, 2 and 4"));
}

}  // namespace
}  // namespace corvane::report
