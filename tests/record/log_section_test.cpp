#include "record/log_section.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::record {
namespace {

const char *const kSection =
    "**** Start Corvane. 2026/11/21 14:03:22 ****\n"
    "Parameters:\n"
    "Batch                : False\n"
    "Max Widths In Pattern: 10\n"
    "Time Limit           : None\n"
    "Warning: Order number 7 is bad.\n"
    "\n"
    "Seed                 : 2024\n"
    "Timed out on grade: LB42, deckle width: 252.000 after generating 37 patterns.\n"
    "Deckle Width: 252.000, Demand Width: 36.500 is in 1 patterns.\n"
    "No freight rates for: Badger Box - Cedar Narrows.\n"
    "Total demand in inches           : 14589.7500\n"
    "Total number of patterns in model: 58\n";
const char *const kEnd = "**** End Corvane. 2026/11/21 14:03:25 ****\n\n";

TEST(LogSection, TellsTheSettingsOfAWholeRun) {
  const LogSection section = lastSection(QByteArray(kSection) + kEnd);
  EXPECT_EQ(section.started, QStringLiteral("2026/11/21 14:03:22"));
  EXPECT_EQ(section.ended, QStringLiteral("2026/11/21 14:03:25"));
  EXPECT_TRUE(section.isComplete);
  EXPECT_EQ(section.seed, 2024);
  EXPECT_EQ(section.demandInches, 14589.75);
  EXPECT_EQ(section.generatedPatterns, 58);
}

TEST(LogSection, WhatIsNoSettingIsAMessage) {
  const LogSection section = lastSection(QByteArray(kSection) + kEnd);
  const QStringList wanted{
      QStringLiteral("Warning: Order number 7 is bad."),
      QStringLiteral(
          "Timed out on grade: LB42, deckle width: 252.000 after generating 37 patterns."),
      QStringLiteral("Deckle Width: 252.000, Demand Width: 36.500 is in 1 patterns."),
      QStringLiteral("No freight rates for: Badger Box - Cedar Narrows.")};
  EXPECT_EQ(section.messages, wanted);
}

TEST(LogSection, ARunThatFailedHasNoEnd) {
  const LogSection section = lastSection(
      "**** Start Corvane. 2026/11/21 14:03:22 ****\nError: No solution to lp, status : 3\n");
  EXPECT_FALSE(section.isComplete);
  EXPECT_EQ(section.seed, std::nullopt);
  EXPECT_EQ(section.messages, QStringList(QStringLiteral("Error: No solution to lp, status : 3")));
}

TEST(LogSection, OnlyTheLastSectionCounts) {
  const LogSection section =
      lastSection(QByteArray(kSection) + kEnd +
                  "**** Start Corvane. 2026/11/22 08:00:00 ****\nSeed                 : 3\n");
  EXPECT_EQ(section.started, QStringLiteral("2026/11/22 08:00:00"));
  EXPECT_EQ(section.seed, 3);
  EXPECT_FALSE(section.isComplete);
  EXPECT_TRUE(section.messages.isEmpty());
}

TEST(LogSection, ABannerWithinALineIsText) {
  const LogSection section = lastSection(
      QByteArray(kSection) + "No freight rates for: **** Start Corvane. x ****\n" + kEnd);
  EXPECT_EQ(section.started, QStringLiteral("2026/11/21 14:03:22"));
  EXPECT_EQ(section.messages.size(), 5);
}

TEST(LogSection, ALogWithoutASectionIsEmpty) {
  EXPECT_EQ(lastSection("something else\n").started, QString());
  EXPECT_EQ(lastSection("").started, QString());
}

}  // namespace
}  // namespace corvane::record
