#include "plan/cut_grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace corvane::plan {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(CutGrid, FindsTheBestCut) {
  const std::vector<PricedWidth> widths{{30, 7, 4}, {20, 4, 9}};
  EXPECT_THAT(CutGrid(widths, 19, 3).best().rolls, IsEmpty());
  EXPECT_THAT(CutGrid(widths, 20, 3).best().rolls, ElementsAre(9));
  EXPECT_THAT(CutGrid(widths, 49, 3).best().rolls, ElementsAre(9, 9));
  EXPECT_THAT(CutGrid(widths, 50, 3).best().rolls, UnorderedElementsAre(4, 9));
  EXPECT_THAT(CutGrid(widths, 200, 3).best().rolls, ElementsAre(4, 4, 4));
  EXPECT_EQ(CutGrid(widths, 80, 3).best().value, 18);
  EXPECT_THAT(CutGrid(widths, 80, 0).best().rolls, IsEmpty());
}

// By the table of all cuts.
TEST(CutGrid, FindsWhatTheTableOfAllCutsHolds) {
  std::mt19937 random(5);
  for (int repetition = 0; repetition < 200; ++repetition) {
    const double unit = repetition % 2 == 0 ? 0.125 : 0.1;
    std::vector<PricedWidth> widths;
    for (std::size_t i = 0; i < 1 + random() % 6; ++i) {
      const double width = unit * static_cast<double>(100 + random() % 500);
      widths.push_back({width, width * (0.9 + 0.01 * static_cast<double>(random() % 20)), i});
    }
    const int limit = 1 + static_cast<int>(random() % 5);
    const double room = 60 + 0.1 * static_cast<double>(random() % 1000) + 1e-9;
    const CutTable table(widths, limit);
    ASSERT_EQ(table.rolls(), limit);
    const CutGrid::Best best = CutGrid(widths, room, limit).best();
    EXPECT_NEAR(best.value, table.valueAt(table.bestWithin(room)), 1e-9);
    double width = 0;
    double value = 0;
    for (const std::size_t roll : best.rolls) {
      width += widths[roll].width;
      value += widths[roll].value;
    }
    EXPECT_LE(width, room);
    EXPECT_NEAR(value, best.value, 1e-9);
    EXPECT_LE(best.rolls.size(), static_cast<std::size_t>(limit));
  }
}

// Rooms of 0 to 10 tens of inches, two widths, and no more rolls than fit.
TEST(CutGrid, TellsItsWorkByTheLargestUnit) {
  const std::vector<PricedWidth> tens{{30, 7, 0}, {20, 4, 1}};
  EXPECT_EQ(CutGrid(tens, 100 + 1e-9, 3).work(), 11 * 3 * 2);
  EXPECT_EQ(CutGrid(tens, 100 + 1e-9, 50).work(), 11 * 5 * 2);
  EXPECT_EQ(CutGrid({{30.125, 7, 0}}, 60.25 + 1e-9, 2).work(), 3 * 2);
  EXPECT_EQ(CutGrid({{30.1, 7, 0}, {20.2, 1, 1}}, 60.2 + 1e-9, 1).work(), 603 * 2);
}

TEST(CutGrid, HasEndlessWorkWhereWidthsHaveNoUnit) {
  EXPECT_TRUE(std::isinf(CutGrid({{33.33333333, 7, 0}}, 100, 3).work()));
  EXPECT_TRUE(std::isinf(CutGrid({{30, 7, 0}, {20 + 1e-9, 4, 1}}, 100, 3).work()));
  EXPECT_TRUE(std::isinf(CutGrid({}, 100, 3).work()));
  EXPECT_TRUE(std::isinf(CutGrid({{1e-4, 4, 0}}, 100, 3).work()));
}

}  // namespace

}  // namespace corvane::plan
