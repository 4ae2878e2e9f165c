#include "convert/natural_order.h"

#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

int compare(const char *a, const char *b) {
  const int forth = compareNaturally(a, b);
  EXPECT_EQ(compareNaturally(b, a), -forth);
  return forth;
}

TEST(NaturalOrder, ComparesNumbersAsNumbers) {
  EXPECT_LT(compare("9", "10"), 0);
  EXPECT_LT(compare("Week 9", "Week 10"), 0);
  EXPECT_LT(compare("2026-W9", "2026-W10"), 0);
  EXPECT_LT(compare("99999999999999999998", "99999999999999999999"), 0);
}

TEST(NaturalOrder, ComparesTheRestByItsCharacters) {
  EXPECT_LT(compare("April", "May"), 0);
  EXPECT_LT(compare("W", "W1"), 0);
  EXPECT_LT(compare("1a", "1b"), 0);
  EXPECT_EQ(compare("W1", "W1"), 0);
  EXPECT_EQ(compare("01", "1"), 0);
}

}  // namespace
}  // namespace corvane::convert
