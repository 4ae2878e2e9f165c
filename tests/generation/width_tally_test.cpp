#include "generation/width_tally.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

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

}  // namespace
}  // namespace corvane
