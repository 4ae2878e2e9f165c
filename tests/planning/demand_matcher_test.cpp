#include "planning/demand_matcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

// "{row}:{quantity}" for every entry.
std::string dump(const DemandMatcher &matcher) {
  std::string text;
  for (const DemandMatcher::Entry &entry : matcher.entries()) {
    text += text.empty() ? "" : " ";
    text += std::to_string(entry.row) + ":" + std::to_string(entry.quantity);
  }
  return text;
}

DemandMatcher matched(const std::vector<qint32> &quantities) {
  DemandMatcher matcher;
  for (quint32 row = 0; row < quantities.size(); ++row) {
    matcher.add(row, quantities[row]);
  }
  return matcher;
}

TEST(DemandMatcher, AnOrderWithoutAnEntryOfItsQuantityBeginsOne) {
  EXPECT_EQ(dump(matched({})), "");
  EXPECT_EQ(dump(matched({10, 5, 7})), "0:10 1:5 2:7");
}

TEST(DemandMatcher, AnOrderOfAnEntrysQuantityIsAddedToIt) {
  EXPECT_EQ(dump(matched({10, 5, 10})), "0:20 1:5");
}

TEST(DemandMatcher, TheGrownEntryIsMatchedByItsNewQuantityOnly) {
  EXPECT_EQ(dump(matched({10, 10, 10})), "0:20 2:10");
  EXPECT_EQ(dump(matched({10, 10, 20})), "0:40");
}

TEST(DemandMatcher, OfEntriesAlikeTheFirstTakesTheOrder) {
  // 10; 10 20; 20 20; 40 20; 40 40; 80 40
  EXPECT_EQ(dump(matched({10, 20, 10, 20})), "0:40 1:20");
  EXPECT_EQ(dump(matched({10, 20, 10, 20, 20, 40})), "0:80 1:40");
}

TEST(DemandMatcher, SumsStayAtTheLargestThirtyTwoBitValue) {
  EXPECT_EQ(dump(matched({INT_MAX, INT_MAX, INT_MAX})), "0:2147483647");
}

TEST(DemandMatcher, ClearForgetsTheEntries) {
  DemandMatcher matcher = matched({10, 5, 10});
  matcher.clear();
  EXPECT_EQ(dump(matcher), "");
  matcher.add(7, 20);
  matcher.add(8, 5);
  EXPECT_EQ(dump(matcher), "7:20 8:5");
}

TEST(DemandMatcher, RandomOrdersAgreeWithAScanOfTheEntries) {
  std::mt19937 random(17);
  DemandMatcher matcher;
  for (int round = 0; round < 20; ++round) {
    matcher.clear();
    std::vector<DemandMatcher::Entry> scanned;
    for (quint32 row = 0; row < 500; ++row) {
      const auto quantity = static_cast<qint32>(1 + random() % 12);
      matcher.add(row, quantity);
      const auto match = std::find_if(
          scanned.begin(), scanned.end(),
          [&](const DemandMatcher::Entry &entry) { return entry.quantity == quantity; });
      if (match == scanned.end()) {
        scanned.push_back({row, quantity});
      } else {
        match->quantity += quantity;
      }
    }
    std::string expected;
    for (const DemandMatcher::Entry &entry : scanned) {
      expected += expected.empty() ? "" : " ";
      expected += std::to_string(entry.row) + ":" + std::to_string(entry.quantity);
    }
    ASSERT_EQ(dump(matcher), expected);
  }
}

}  // namespace
}  // namespace corvane
