#include "core/skip_list_appender.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <new>
#include <string>

#include "core/comparison.h"
#include "core/numbers.h"
#include "support/heap_probe.h"
#include "support/skip_list_dump.h"

namespace corvane {
namespace {

using support::HeapProbe;

using Numbers = skipList<double>;

class SkipListAppending : public testing::Test {
 protected:
  double *number(double value) { return &numbers_.emplace_back(value); }

  DoubleComp comparator_;

 private:
  std::deque<double> numbers_;
};

TEST_F(SkipListAppending, LinksAsAppendDoes) {
  for (int argument = 0; argument <= 8; ++argument) {
    for (int count = 0; count <= 70; ++count) {
      Numbers list(&comparator_, false, argument);
      Numbers expected(&comparator_, false, argument);
      {
        SkipListAppender<double> appender(list);
        for (int value = 0; value < count; ++value) {
          appender.append(number(value));
          expected.append(number(value));
        }
      }
      ASSERT_EQ(NumbersInspector::dump(list), NumbersInspector::dump(expected))
          << argument << ", " << count;
      ASSERT_EQ(list.count(), expected.count());
    }
  }
}

TEST_F(SkipListAppending, GoesOnBehindWhatTheListHolds) {
  Numbers list(&comparator_, false, 3);
  Numbers expected(&comparator_, false, 3);
  for (Numbers *each : {&list, &expected}) {
    for (int value = 0; value < 40; ++value) {
      each->insert(number(value));
    }
    each->remove(39);
    each->rewind();
    each->step();
  }
  {
    SkipListAppender<double> appender(list);
    for (int value = 40; value < 60; ++value) {
      appender.append(number(value));
    }
  }
  for (int value = 40; value < 60; ++value) {
    expected.append(number(value));
  }
  EXPECT_EQ(NumbersInspector::dump(list), NumbersInspector::dump(expected));
  for (Numbers *each : {&list, &expected}) {
    each->append(number(60));
    each->insert(number(38.5));
  }
  EXPECT_EQ(NumbersInspector::dump(list), NumbersInspector::dump(expected));
}

TEST_F(SkipListAppending, ComparesNothingAndDrawsNothing) {
  struct NoComp : Comparison<double> {
    int compare(const double &a, const double &b) const override {
      ADD_FAILURE() << a << " and " << b;
      return 0;
    }
  };
  NoComp none;
  Numbers list(&none, false, 3);
  SkipListAppender<double> appender(list);
  for (int value = 0; value < 10; ++value) {
    appender.append(number(value));
  }
  EXPECT_EQ(NumbersInspector::randomState(list), 0x1E9EB544U);
}

TEST_F(SkipListAppending, LeavesTheListInOrderWhenThereIsNoMemory) {
  for (int failing = 1; failing <= 12; ++failing) {
    Numbers list(&comparator_, false, 2);
    std::array<double, 20> values{};
    bool thrown = false;
    {
      SkipListAppender<double> appender(list);
      int value = 0;
      try {
        HeapProbe probe;
        probe.failRequest(failing);
        for (; value < 20; ++value) {
          values[static_cast<std::size_t>(value)] = value;
          appender.append(&values[static_cast<std::size_t>(value)]);
        }
      } catch (const std::bad_alloc &) {
        thrown = true;
      }
      EXPECT_EQ(list.count(), value);
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(NumbersInspector::complaint(list), "");
    list.append(number(100));
    EXPECT_EQ(NumbersInspector::complaint(list), "");
    EXPECT_EQ(NumbersInspector::finger(list, 0), NumbersInspector::level(list, 0).back());
  }
}

}  // namespace
}  // namespace corvane
