#include "plan/cut_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::plan {

namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(CutTable, HoldsTheBestCutWithinEveryWidth) {
  const CutTable table({{30, 7, 4}, {20, 4, 9}}, 3);
  ASSERT_EQ(table.rolls(), 3);
  EXPECT_THAT(table.rollsAt(table.bestWithin(0)), IsEmpty());
  EXPECT_THAT(table.rollsAt(table.bestWithin(19.9)), IsEmpty());
  EXPECT_THAT(table.rollsAt(table.bestWithin(20)), UnorderedElementsAre(9));
  EXPECT_THAT(table.rollsAt(table.bestWithin(49)), UnorderedElementsAre(9, 9));
  EXPECT_THAT(table.rollsAt(table.bestWithin(50)), UnorderedElementsAre(4, 9));
  EXPECT_THAT(table.rollsAt(table.bestWithin(1000)), UnorderedElementsAre(4, 4, 4));
  EXPECT_EQ(table.valueAt(table.bestWithin(80)), 18);
}

TEST(CutTable, LeavesOutWhatTakesMoreWidthForLess) {
  const CutTable table({{30, 7, 0}, {20, 8, 1}}, 1);
  EXPECT_THAT(table.rollsAt(table.bestWithin(35)), UnorderedElementsAre(1));
}

TEST(CutTable, HasFewerRollsWhereWidthsAreMany) {
  std::vector<PricedWidth> widths;
  for (std::size_t i = 0; i < 600; ++i) {
    widths.push_back({10.0 + static_cast<double>(i), 1.0 + static_cast<double>(i), i});
  }
  EXPECT_EQ(CutTable(widths, 10).rolls(), 2);
  widths.resize(50);
  EXPECT_EQ(CutTable(widths, 10).rolls(), 3);
  EXPECT_EQ(CutTable(widths, 2).rolls(), 2);
}

TEST(CutTable, IsEmptyUntilItIsMade) {
  EXPECT_EQ(CutTable().rolls(), 0);
}

}  // namespace

}  // namespace corvane::plan
