#include "network/period_order.h"

#include <gtest/gtest.h>

namespace corvane::network {
namespace {

TEST(PeriodOrder, NumbersInNamesCountAsNumbers) {
  EXPECT_TRUE(naturallyBefore("9", "10"));
  EXPECT_TRUE(naturallyBefore("week 9", "week 10"));
  EXPECT_FALSE(naturallyBefore("week 10", "week 9"));
  EXPECT_TRUE(naturallyBefore("2026-W05", "2026-W11"));
  EXPECT_TRUE(naturallyBefore("a", "a1"));
  EXPECT_FALSE(naturallyBefore("01", "1"));
  EXPECT_FALSE(naturallyBefore("1", "01"));
}

TEST(PeriodOrder, NeighboursTheWrongWayRoundAreTold) {
  EXPECT_EQ(unsortedPeriods({"1", "2", "10"}), "");
  EXPECT_EQ(unsortedPeriods({"3", "1", "2"}), "\"3\" before \"1\"");
  EXPECT_EQ(unsortedPeriods({}), "");
}

}  // namespace
}  // namespace corvane::network
