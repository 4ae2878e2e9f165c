// What a line is taken for as a whole, where it stands between two mistakes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "checks/checked_files.h"

namespace corvane::checks {
namespace {

using testing::ElementsAre;

MillTexts withOrders(const std::string &orders) {
  MillTexts texts = cleanMill();
  texts.orders = orders;
  return texts;
}

std::vector<std::string> found(const MillTexts &texts, const std::string &file) {
  std::vector<std::string> places;
  for (const Found &one : TextCheck(texts).found) {
    if (one.place.rfind(file, 0) == 0) {
      places.push_back(one.text());
    }
  }
  return places;
}

TEST(LineFaults, AnEmptyLineIsAnErrorWhereItAddsACutter) {
  MillTexts texts = cleanMill();
  texts.machines += "\n";
  texts.orders += "\n";
  std::map<std::string, Severity> severities;
  for (const Found &one : TextCheck(texts).found) {
    severities[one.text()] = one.severity;
  }
  EXPECT_EQ(severities.at("machines:4:1 CV108"), Severity::kError);
  EXPECT_EQ(severities.at("orders:7:1 CV108"), Severity::kWarning);
}

TEST(LineFaults, OneWordDoesNotMakeAFirstLineAHeader) {
  MillTexts texts = cleanMill();
  texts.orders.replace(texts.orders.find("44.75"), 5, "wide");
  EXPECT_THAT(found(texts, "orders"), ElementsAre("orders:1:8 CV206"));
}

TEST(LineFaults, MostLinesTellTheSeparatorOfAFile) {
  const std::string odd = "1;LB42;36.5;40;Badger Box\n";
  const std::string even = "1,LB42,44.75,60,Badger Box\n";
  EXPECT_THAT(found(withOrders(odd + odd + even), "orders"), ElementsAre("orders:1:2 CV110"));
  EXPECT_THAT(found(withOrders(odd + even + odd + even), "orders"),
              testing::IsSupersetOf({"orders:1:2 CV110", "orders:3:2 CV110"}));
}

TEST(LineFaults, WhereBrokenLinesLeaveNoOrderTheyAreTheCause) {
  EXPECT_THAT(found(withOrders("1,LB42,wide,60\n"), "orders"), ElementsAre("orders:1:15 CV202"));
}

TEST(LineFaults, ADecimalCommaThatCanBeTwoIsAGuess) {
  // 30.5 for 1 and no delay, or 30 with a delay of 5.1.
  MillTexts texts = cleanMill();
  texts.rates.replace(texts.rates.find("30.5,0"), 6, "30,5,1");
  for (const Found &one : TextCheck(texts).found) {
    if (one.code == "CV204") {
      EXPECT_EQ(one.fixKind, FixKind::kUnsafe);
    }
  }
  EXPECT_THAT(found(texts, "rates"), testing::Contains("rates:5:38 CV204"));
}

}  // namespace
}  // namespace corvane::checks
