#include "report/figures.h"

#include <gtest/gtest.h>

#include "record/example_record.h"

namespace corvane::report {
namespace {

const QString kA = QStringLiteral("A");
const QString kB = QStringLiteral("B");

TEST(Figures, PaperTrimAndWasteByGradePeriodAndCutter) {
  const Figures figures = figuresOf(record::exampleRecord());
  EXPECT_DOUBLE_EQ(figures.all.reels, 23.5);
  EXPECT_DOUBLE_EQ(figures.all.inches, 2295);
  EXPECT_DOUBLE_EQ(figures.all.trim, 41);
  EXPECT_DOUBLE_EQ(figures.all.wasteCost, 30 * 2 + 11 * 4);
  const GradeFigures &a = figures.grades.at(kA);
  EXPECT_DOUBLE_EQ(a.byPeriod[0].inches, 1300);
  EXPECT_DOUBLE_EQ(a.byPeriod[0].trim, 30);
  EXPECT_DOUBLE_EQ(a.byPeriod[1].trim, 0);
  EXPECT_NEAR(a.all.trimPercent(), 100 * 30.0 / 1800, 1e-12);
  EXPECT_DOUBLE_EQ(figures.byCutter[1].inches, 495);
}

TEST(Figures, RollsByWidth) {
  const Figures figures = figuresOf(record::exampleRecord());
  const WidthFigures &rolls = figures.grades.at(kB).widths.at(44);
  EXPECT_DOUBLE_EQ(rolls.ordered, 12);
  EXPECT_DOUBLE_EQ(rolls.made, 11);
  EXPECT_DOUBLE_EQ(rolls.delivered, 10);
  EXPECT_DOUBLE_EQ(rolls.unmet, 2);
  EXPECT_DOUBLE_EQ(rolls.surplus, 1);
  EXPECT_DOUBLE_EQ(rolls.seen, 6);
  EXPECT_DOUBLE_EQ(figures.grades.at(kA).widths.at(40).made, 30);
}

TEST(Figures, PaperLessTrimLessSurplusPlusShortIsTheDemand) {
  const record::Record record = record::exampleRecord();
  const Figures figures = figuresOf(record);
  EXPECT_DOUBLE_EQ(figures.surplus.inches, 44);
  EXPECT_DOUBLE_EQ(figures.unmet.inches, 88);
  EXPECT_DOUBLE_EQ(figures.reckonedDemand(), *record.log.demandInches);
  EXPECT_DOUBLE_EQ(figures.ordered.inches, *record.log.demandInches);
}

TEST(Figures, PatternsUsedOfThoseOffered) {
  const Figures figures = figuresOf(record::exampleRecord());
  EXPECT_EQ(figures.usedPatterns, 3);
  EXPECT_EQ(figures.grades.at(kA).patterns, 3);
  EXPECT_EQ(figures.grades.at(kA).usedPatterns, 2);
  EXPECT_EQ(figures.patterns[0].byPeriod, (std::vector<double>{10, 5}));
  EXPECT_EQ(figures.patterns[0].reels, 15);
  EXPECT_TRUE(figures.patterns[2].byPeriod.empty());
}

TEST(Figures, WhatGenerationSaw) {
  const Figures figures = figuresOf(record::exampleRecord());
  EXPECT_EQ(figures.demandGroups, 6);
  EXPECT_EQ(figures.partlySeenGroups, 1);
  EXPECT_DOUBLE_EQ(figures.seenInches, 2298 - 6 * 44);
}

TEST(Figures, FreightByModeAndLane) {
  const Figures figures = figuresOf(record::exampleRecord());
  const Lane lane{QStringLiteral("Truck"), QStringLiteral("Alder"), QStringLiteral("Yew")};
  EXPECT_DOUBLE_EQ(figures.lanes.at(lane).rolls, 19);
  EXPECT_DOUBLE_EQ(figures.lanes.at(lane).cost, 140);
  EXPECT_DOUBLE_EQ(figures.lanes.at(lane).inches, 9 * 30 + 10 * 44);
  record::Record record = record::exampleRecord();
  record.machines[0].mill.clear();
  EXPECT_EQ(figuresOf(record).lanes.begin()->first.from, QStringLiteral("W1"));
}

TEST(Figures, WithoutAPlanNothingIsWeighed) {
  record::Record record = record::exampleRecord();
  record.plan.reset();
  const Figures figures = figuresOf(record);
  EXPECT_DOUBLE_EQ(figures.all.inches, 0);
  EXPECT_DOUBLE_EQ(figures.ordered.inches, 2298);
  EXPECT_EQ(figures.grades.at(kA).patterns, 3);
}

TEST(Figures, AMachineIsFullWhenNothingIsLeft) {
  record::Record record = record::exampleRecord();
  EXPECT_TRUE(isFull(record, {0, 0, 7 - 1e-7, 7}));
  EXPECT_FALSE(isFull(record, {0, 0, 6.95, 7}));
}

TEST(Figures, WithWholeReelsAMachineIsFullWhenNoReelFits) {
  record::Record record = record::exampleRecord();
  record.plan->wholeReels = true;  // its quickest reel takes a tenth of a day
  EXPECT_TRUE(isFull(record, {0, 0, 6.91, 7}));
  EXPECT_FALSE(isFull(record, {0, 0, 6.89, 7}));
}

TEST(Figures, CostsByKind) {
  const record::Plan plan = *record::exampleRecord().plan;
  EXPECT_DOUBLE_EQ(costOf(plan, "freight"), 500);
  EXPECT_DOUBLE_EQ(costOf(plan, "other"), 0);
}

}  // namespace
}  // namespace corvane::report
