#include "core/comparison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {

TEST(StrComp, OrdersTextByCodeUnitAndCase) {
  const StrComp comparator;
  EXPECT_EQ(comparator.compare("a", "b"), -1);
  EXPECT_EQ(comparator.compare("b", "a"), 1);
  EXPECT_EQ(comparator.compare("a", "a"), 0);
  EXPECT_EQ(comparator.compare("Z", "a"), -1);
  EXPECT_EQ(comparator.compare("10", "9"), -1);
  EXPECT_EQ(comparator.compare("", "a"), -1);
  EXPECT_EQ(comparator.compare("ab", "a"), 1);
  EXPECT_EQ(comparator.compare(QStringLiteral("\u00e9"), "z"), 1);
}

TEST(StrComp, CodeUnitsDecideNotCodePoints) {
  // U+1F600 starts with the surrogate D83D, which lies below U+FF21.
  const StrComp comparator;
  EXPECT_EQ(comparator.compare(QString::fromUtf8("\xF0\x9F\x98\x80"), QStringLiteral("\uFF21")),
            -1);
}

TEST(StrComp, AnEmptyTextEqualsANullOne) {
  EXPECT_EQ(StrComp().compare(QString(), QString("")), 0);
}

TEST(DoubleComp, OrdersNumbersWithoutTolerance) {
  const DoubleComp comparator;
  EXPECT_EQ(comparator.compare(1, 2), -1);
  EXPECT_EQ(comparator.compare(2, 1), 1);
  EXPECT_EQ(comparator.compare(30, 30), 0);
  EXPECT_EQ(comparator.compare(30, std::nextafter(30.0, 31.0)), -1);
  EXPECT_EQ(comparator.compare(0.0, -0.0), 0);
}

TEST(DoubleComp, WhatIsNotOrderedComparesEqual) {
  const DoubleComp comparator;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(comparator.compare(nan, 1), 0);
  EXPECT_EQ(comparator.compare(1, nan), 0);
}

TEST(Comparison, TheScratchWordsAreSetForAsLongAsASearchLasts) {
  DoubleComp comparator;
  const auto words = [&] {
    return std::vector<qint32>{comparator.scratch(0), comparator.scratch(1), comparator.scratch(2)};
  };
  EXPECT_EQ(words(), (std::vector<qint32>{0, 0, 0}));
  {
    const Comparison<double>::SearchScope scope(comparator);
    EXPECT_EQ(words(), (std::vector<qint32>{1, 0, 0}));
  }
  EXPECT_EQ(words(), (std::vector<qint32>{0, 0, 0}));
}

}  // namespace
}  // namespace corvane
