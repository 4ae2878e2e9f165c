#include "checks/check_summary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checks/checked_files.h"

namespace corvane::checks {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

// One machine of 1000 inches a day and one of 500, both of them for seven days a week.
MillTexts twoMachines() {
  MillTexts texts = cleanMill();
  texts.machines =
      "Alder Falls,Quick,LB42,100,10,68.5,13.75\n"
      "Birch Landing,Slow,LB42,50,10,69,14\n";
  texts.orders =
      "1,LB42,25,240,Badger Box\n"
      "2,LB42,25,480,Badger Box\n";
  return texts;
}

std::vector<double> daysOf(const CheckSummary &summary, const std::string &machine) {
  for (const CheckSummary::Machine &one : summary.machines) {
    if (one.name == machine) {
      return one.days;
    }
  }
  return {};
}

// 6,000 inches in the first week, of which the slow machine can make 3,500 and the quick one all;
// 12,000 in the second, more than both make.
TEST(CheckSummary, AMachineNeedsTheDaysForWhatTheOthersCannotMake) {
  const TextCheck check(twoMachines());
  const CheckSummary &summary = check.mill.summary;
  EXPECT_EQ(summary.availableDays, 7);
  EXPECT_THAT(daysOf(summary, "Quick"), ElementsAre(DoubleNear(2.5, 1e-9), DoubleNear(8.5, 1e-9)));
  EXPECT_THAT(daysOf(summary, "Slow"), ElementsAre(DoubleNear(0, 1e-9), DoubleNear(10, 1e-9)));
}

TEST(CheckSummary, AllTogetherNeedTheDaysOfTheBestMachineOfEachGrade) {
  MillTexts texts = twoMachines();
  EXPECT_THAT(TextCheck(texts).mill.summary.all.days,
              ElementsAre(DoubleNear(6, 1e-9), DoubleNear(12, 1e-9)));
  texts.machines += "Birch Landing,Slow,CM26,40,5,69,14\n";
  texts.orders += "2,CM26,20,30,Badger Box\n";
  EXPECT_THAT(TextCheck(texts).mill.summary.all.days,
              ElementsAre(DoubleNear(6, 1e-9), DoubleNear(12 + 3, 1e-9)));
}

TEST(CheckSummary, CountsLinesInchesGradesAndPeriodsInTheirOrder) {
  MillTexts texts = cleanMill();
  texts.orders = "9,LB42,44.75,2,Badger Box\n3,CM26,33.75,4,Badger Box\n3,CM26,-1,4,Badger Box\n";
  const TextCheck check(texts);
  const CheckSummary &summary = check.mill.summary;
  EXPECT_THAT(summary.periods, ElementsAre("9", "3"));
  EXPECT_THAT(summary.grades, ElementsAre("CM26", "LB42"));
  EXPECT_EQ(summary.inches, 2 * 44.75 + 4 * 33.75);
  ASSERT_EQ(summary.files.size(), 4U);
  EXPECT_EQ(summary.files[2].lines, 3);
  EXPECT_EQ(summary.files[2].accepted, 2);
  EXPECT_EQ(summary.files[2].dropped(), 1);
  EXPECT_EQ(summary.files[0].comments, 1);
}

TEST(CheckSummary, NamesCustomersWhomNoMillOfTheirGradeReaches) {
  MillTexts texts = cleanMill();
  texts.orders += "2,CM26,33.75,64,Far Away\n";
  texts.rates += "Far Away,Birch Landing,Truck,28,0\n";
  EXPECT_THAT(TextCheck(texts).mill.summary.customersWithoutWay, ElementsAre("Far Away"));
  EXPECT_THAT(TextCheck(cleanMill()).mill.summary.customersWithoutWay, ElementsAre());
}

}  // namespace
}  // namespace corvane::checks
