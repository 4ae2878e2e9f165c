#include "generation/period_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "support/heap_probe.h"
#include "support/pattern_set_dump.h"

namespace corvane {
namespace {

using support::valuesOf;
using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(PeriodValues, AreNoneAtFirstAndOnePointerWide) {
  const PeriodValues<double> values;
  EXPECT_TRUE(values.isEmpty());
  EXPECT_EQ(values.size(), 0);
  EXPECT_FALSE(values.contains(0));
  EXPECT_EQ(sizeof values, sizeof(void *));
}

TEST(PeriodValues, HoldOneValueAPeriod) {
  const PeriodValues<double> values = {0, 0, 3.5, 0};
  EXPECT_FALSE(values.isEmpty());
  EXPECT_EQ(values.size(), 4);
  EXPECT_THAT(valuesOf(values), ElementsAre(0, 0, 3.5, 0));
  EXPECT_TRUE(values.contains(3.5));
  EXPECT_FALSE(values.contains(3));
}

TEST(PeriodValues, KeepTheSignOfZeroAndWhatIsNoNumber) {
  const PeriodValues<double> values = {0.0, -0.0, std::numeric_limits<double>::quiet_NaN(), 0.0};
  EXPECT_FALSE(std::signbit(values.at(0)));
  EXPECT_TRUE(std::signbit(values.at(1)));
  EXPECT_TRUE(std::isnan(values.at(2)));
  EXPECT_FALSE(std::signbit(values.at(3)));
}

TEST(PeriodValues, TakeMemoryForWhatChangesOnly) {
  PeriodValues<double> values;
  const support::HeapProbe heap;
  for (int period = 0; period < 10000; ++period) {
    values.append(period < 5000 ? 0 : 100);
  }
  EXPECT_LE(heap.requests(), 4U);
}

TEST(PeriodValues, TakeNoMoreMemoryWherePeriodAfterPeriodIsSet) {
  PeriodValues<qint32> values;
  for (int period = 0; period < 10000; ++period) {
    values.append(0);
  }
  const support::HeapProbe heap;
  for (int period = 0; period < 10000; ++period) {
    values.set(period, 1);
  }
  EXPECT_LE(heap.requests(), 4U);
  EXPECT_EQ(values.at(9999), 1);
  EXPECT_FALSE(values.contains(0));
}

// Every sequence of five values out of three, changed at every place to every value.
TEST(PeriodValues, AreSetOneByOne) {
  for (int sequence = 0; sequence < 243; ++sequence) {
    std::vector<qint32> before;
    for (int at = 0, rest = sequence; at < 5; ++at, rest /= 3) {
      before.push_back(rest % 3);
    }
    for (int change = 0; change < 15; ++change) {
      PeriodValues<qint32> values;
      for (const qint32 value : before) {
        values.append(value);
      }
      std::vector<qint32> expected = before;
      expected[static_cast<std::size_t>(change % 5)] = change / 5;
      values.set(change % 5, change / 5);
      ASSERT_THAT(valuesOf(values), ElementsAreArray(expected)) << sequence << ", " << change;
      values.append(before.back());
      ASSERT_EQ(values.size(), 6);
    }
  }
}

TEST(PeriodValues, AgreeWithAPlainSequence) {
  std::mt19937 random(5);
  PeriodValues<qint32> values;
  std::vector<qint32> plain;
  for (int step = 0; step < 5000; ++step) {
    const auto value = static_cast<qint32>(random() % 3);
    if (plain.size() < 40 || step % 100 == 0) {
      values.append(value);
      plain.push_back(value);
    } else {
      const std::size_t at = random() % plain.size();
      values.set(static_cast<qint32>(at), value);
      plain[at] = value;
    }
    ASSERT_EQ(valuesOf(values), plain) << step;
  }
}

}  // namespace
}  // namespace corvane
