#include "generation/lp_columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>
#include <utility>

#include "support/fatal_end.h"
#include "support/heap_probe.h"

namespace corvane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

std::vector<std::pair<double, int>> tallyOf(const QLinkedList<double> &widths) {
  std::vector<TallyEntry> tally{{99, 9}};
  tallyWidths(widths, tally);
  std::vector<std::pair<double, int>> pairs;
  for (const TallyEntry &entry : tally) {
    pairs.emplace_back(entry.width, entry.count);
  }
  return pairs;
}

TEST(WidthTally, CountsEachDistinctWidthWidestFirst) {
  EXPECT_THAT(tallyOf({45, 30, 30, 30, 12}), ElementsAre(Pair(45, 1), Pair(30, 3), Pair(12, 1)));
}

TEST(WidthTally, OfAPatternOutOfOrderIsSortedAllTheSame) {
  EXPECT_THAT(tallyOf({12, 30, 12, 45}), ElementsAre(Pair(45, 1), Pair(30, 1), Pair(12, 2)));
}

TEST(WidthTally, OfNoWidthsIsEmpty) {
  EXPECT_THAT(tallyOf({}), IsEmpty());
}

TEST(WidthTally, TellsApartWidthsThatDifferInTheLastBit) {
  const double next = std::nextafter(30.0, 31.0);
  EXPECT_THAT(tallyOf({next, 30, next}), ElementsAre(Pair(next, 2), Pair(30, 1)));
}

TEST(RowOfAWidth, IsItsPlaceAmongTheDescendingRows) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> rows{infinity, 60, 45.5, 45.25, 1e-300};
  for (std::size_t row = 0; row < rows.size(); ++row) {
    EXPECT_EQ(rowOf(rows[row], rows), static_cast<int>(row));
  }
}

TEST(RowOfAWidth, TellsApartWidthsThatDifferInTheLastBit) {
  const double next = std::nextafter(30.0, 31.0);
  EXPECT_EQ(rowOf(next, {next, 30.0}), 0);
  EXPECT_EQ(rowOf(30.0, {next, 30.0}), 1);
}

// Expects the words when the n-th request for memory of the step is refused.
void expectRefusal(int n, const std::function<void(std::ostream &log)> &step,
                   const std::string &what) {
  const auto run = [&](std::ostream &log) {
    support::HeapProbe heap;
    heap.failRequest(n);
    step(log);
  };
  support::expectRunEnds(run, "Error: Could not allocate memory for " + what + ".");
}

class ColumnsOfThreeRows : public testing::Test {
 protected:
  void append(double cost, const QLinkedList<double> &widths) {
    columns_.append(cost, widths, rowWidths_);
  }

  std::ostringstream log_;
  LpColumns columns_{LpColumns::kAdditional, log_};
  std::vector<double> rowWidths_{45, 30, 12};
};

TEST_F(ColumnsOfThreeRows, AreNoneAtFirst) {
  EXPECT_EQ(columns_.count(), 0);
  EXPECT_EQ(columns_.nonzeros(), 0);
}

TEST_F(ColumnsOfThreeRows, HoldCostStartRowsMultiplicitiesAndBoundsOfEachPattern) {
  append(100, {30, 30, 12});
  append(120.5, {45});
  append(100, {45, 12, 12, 12});
  EXPECT_EQ(columns_.count(), 3);
  EXPECT_EQ(columns_.nonzeros(), 5);
  EXPECT_THAT(columns_.objective, ElementsAre(100, 120.5, 100));
  EXPECT_THAT(columns_.starts, ElementsAre(0, 2, 3));
  EXPECT_THAT(columns_.counts, ElementsAre(2, 1, 2));
  EXPECT_THAT(columns_.indices, ElementsAre(1, 2, 0, 0, 2));
  EXPECT_THAT(columns_.values, ElementsAre(2, 1, 1, 1, 3));
  EXPECT_THAT(columns_.lower, Each(0));
  EXPECT_THAT(columns_.lower, SizeIs(3));
  EXPECT_THAT(columns_.upper, ElementsAre(1e20, 1e20, 1e20));
}

TEST_F(ColumnsOfThreeRows, OfAPatternWithoutWidthsHaveNoNonzeros) {
  append(-1, {});
  append(100, {12});
  EXPECT_THAT(columns_.starts, ElementsAre(0, 0));
  EXPECT_THAT(columns_.counts, ElementsAre(0, 1));
  EXPECT_THAT(columns_.indices, ElementsAre(2));
}

TEST_F(ColumnsOfThreeRows, TakeNoMemoryUpToWhatWasTakenAhead) {
  append(1, {45, 30, 12});
  columns_.reserveObjective(5);
  columns_.reserveMatrix(5, 15);
  columns_.reserveBounds(5);
  const QLinkedList<double> widths = {45, 30, 12};
  const support::HeapProbe heap;
  for (int column = 1; column < 5; ++column) {
    append(column, widths);
  }
  EXPECT_EQ(heap.requests(), 0U);
}

TEST_F(ColumnsOfThreeRows, EndTheRunWithoutMemoryAhead) {
  const std::pair<const char *, int> parts[] = {{"additional objective function coefficients", 1},
                                                {"additions to the constraint matrix", 4},
                                                {"additions to the lower bounds", 1},
                                                {"additions to the upper bounds", 1}};
  const auto step = [](std::ostream &log) {
    LpColumns columns(LpColumns::kAdditional, log);
    columns.reserveObjective(5);
    columns.reserveMatrix(5, 15);
    columns.reserveBounds(5);
  };
  int n = 0;
  for (const auto &[part, arrays] : parts) {
    for (int array = 0; array < arrays; ++array) {
      expectRefusal(++n, step, part);
    }
  }
}

TEST_F(ColumnsOfThreeRows, EndTheRunWithoutMemoryForOneMore) {
  append(100, {45});
  const QLinkedList<double> widths = {30};
  const auto appendOne = [&](std::ostream &log) {
    LpColumns columns(LpColumns::kAdditional, log);
    columns.append(100, widths, rowWidths_);
  };
  // The first request is that of the tally.
  expectRefusal(2, appendOne, "additional objective function coefficients");
  for (int n = 3; n <= 6; ++n) {
    expectRefusal(n, appendOne, "additions to the constraint matrix");
  }
  expectRefusal(7, appendOne, "additions to the lower bounds");
  expectRefusal(8, appendOne, "additions to the upper bounds");
}

TEST(WholeLp, StartsWithItsRowsAndNoColumns) {
  std::ostringstream log;
  const LpProblem lp(2, 3, 5, log);
  EXPECT_EQ(lp.rows(), 2);
  EXPECT_EQ(lp.columns.count(), 0);
  EXPECT_THAT(lp.senses, ElementsAre('G', 'G'));
  EXPECT_THAT(lp.rightHandSides, ElementsAre(0, 0));
  EXPECT_EQ(log.str(), "");
}

TEST(WholeLp, TakesItsArraysInOrder) {
  const char *parts[] = {"objective function coefficients",
                         "senses",
                         "constraint matrix",
                         "constraint matrix",
                         "constraint matrix",
                         "constraint matrix",
                         "lower bounds",
                         "upper bounds",
                         "right hand side"};
  int n = 0;
  for (const char *part : parts) {
    expectRefusal(
        ++n, [](std::ostream &log) { const LpProblem lp(2, 3, 5, log); }, part);
  }
}

}  // namespace
}  // namespace corvane
