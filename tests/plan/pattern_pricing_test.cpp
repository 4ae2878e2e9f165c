#include "plan/pattern_pricing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace corvane::plan {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Every cut there is, one after the other.
double bestByEnumeration(const std::vector<Roll> &rolls, double room, int limit,
                         std::size_t first = 0) {
  double best = 0;
  for (std::size_t i = first; i < rolls.size() && limit > 0; ++i) {
    if (rolls[i].width <= room) {
      best = std::max(
          best, rolls[i].value + bestByEnumeration(rolls, room - rolls[i].width, limit - 1, i));
    }
  }
  return best;
}

double valueOf(const Cut &cut, const std::vector<Roll> &rolls) {
  double value = 0;
  for (const std::size_t roll : cut.rolls) {
    value += rolls[roll].value;
  }
  return value;
}

double widthOf(const Cut &cut, const std::vector<Roll> &rolls) {
  double width = 0;
  for (const std::size_t roll : cut.rolls) {
    width += rolls[roll].width;
  }
  return width;
}

// How the widths and the values of a random case come about.
struct Kind {
  double grid;    // widths are multiples of it; 0: any double
  double spread;  // values are widths times 1 - spread to 1 + spread
};

std::vector<Roll> randomRolls(std::size_t count, const Kind &kind, std::mt19937 &random) {
  std::uniform_real_distribution<double> unit(0, 1);
  std::vector<Roll> rolls(count);
  for (Roll &roll : rolls) {
    roll.width = 10 + 60 * unit(random);
    roll.width = kind.grid > 0 ? std::round(roll.width / kind.grid) * kind.grid : roll.width;
    roll.value = roll.width * (1 + kind.spread * (2 * unit(random) - 1));
  }
  return rolls;
}

void expectTheBest(const std::vector<Roll> &rolls, double deckle, int limit) {
  const double best = bestByEnumeration(rolls, deckle + kFitTolerance, limit);
  const std::optional<Cut> cut = bestCut(rolls, deckle, limit, 0);
  ASSERT_EQ(cut.has_value(), best > 0);
  if (!cut) {
    return;
  }
  EXPECT_NEAR(cut->value, best, 2 * kValueGap * best);
  EXPECT_NEAR(valueOf(*cut, rolls), cut->value, 1e-12 * best);
  EXPECT_LE(widthOf(*cut, rolls), deckle + 2 * kFitTolerance);
  EXPECT_LE(cut->rolls.size(), static_cast<std::size_t>(limit));
}

TEST(BestCut, IsWhatEnumerationFinds) {
  std::mt19937 random(7);
  for (const Kind kind : {Kind{0.125, 0.3}, Kind{0.125, 0.02}, Kind{0.125, 0}, Kind{0, 0.3},
                          Kind{0, 0.02}, Kind{0, 0}}) {
    for (int repetition = 0; repetition < 60; ++repetition) {
      const std::size_t count = 1 + random() % 9;
      const double deckle = 60 + static_cast<double>(random() % 1000) / 8;
      const int limit = 1 + static_cast<int>(random() % 7);
      SCOPED_TRACE(std::to_string(kind.grid) + " " + std::to_string(kind.spread) + " " +
                   std::to_string(repetition));
      expectTheBest(randomRolls(count, kind, random), deckle, limit);
    }
  }
}

// Worth their widths, on no grid: bounds cut nothing, and the search goes on from its table.
TEST(BestCut, IsWhatEnumerationFindsWhereBoundsDoNotHelp) {
  std::mt19937 random(8);
  for (int repetition = 0; repetition < 3; ++repetition) {
    expectTheBest(randomRolls(15, {0, 0}, random), 301.7, 8);
  }
}

// The same in eighths of an inch, of which no sum is the deckle.
TEST(BestCut, IsWhatEnumerationFindsOnAGridWhereBoundsDoNotHelp) {
  std::mt19937 random(9);
  for (const double spread : {0.0, 0.001, 0.01}) {
    expectTheBest(randomRolls(15, {0.125, spread}, random), 301.7, 8);
  }
}

TEST(BestCut, ListsItsRollsWidestFirst) {
  const std::vector<Roll> rolls{{20, 20}, {50, 55}, {30, 30}};
  EXPECT_THAT(bestCut(rolls, 100, 5, 0)->rolls, ElementsAre(1, 1));
  EXPECT_THAT(bestCut(rolls, 102, 5, 105)->rolls, ElementsAre(1, 1));
  EXPECT_THAT(bestCut(rolls, 80, 5, 0)->rolls, ElementsAre(1, 2));
}

TEST(BestCut, HoldsToItsLimitOfRolls) {
  const std::vector<Roll> rolls{{10, 10}, {50, 45}};
  EXPECT_THAT(bestCut(rolls, 100, 10, 0)->rolls.size(), 10U);
  EXPECT_THAT(bestCut(rolls, 100, 9, 0)->rolls, ElementsAre(1, 0, 0, 0, 0, 0));
  EXPECT_THAT(bestCut(rolls, 100, 2, 0)->rolls, ElementsAre(1, 1));
  EXPECT_FALSE(bestCut(rolls, 100, 0, 0));
}

TEST(BestCut, MayTouchTheDeckleWithinTheNoiseOfAdditions) {
  const std::vector<Roll> rolls{{0.1, 1}};
  EXPECT_EQ(bestCut(rolls, 0.3, 5, 0)->rolls.size(), 3U);
  EXPECT_EQ(bestCut(rolls, 0.3 - 1e-8, 5, 0)->rolls.size(), 2U);
}

TEST(BestCut, IsNothingUnlessItIsWorthMoreThanAsked) {
  const std::vector<Roll> rolls{{30, 30}, {45, 47}};
  EXPECT_TRUE(bestCut(rolls, 90, 5, 93.9));
  EXPECT_FALSE(bestCut(rolls, 90, 5, 94));
  EXPECT_FALSE(bestCut(rolls, 90, 5, std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(bestCut(rolls, 29, 5, 0));
  EXPECT_FALSE(bestCut({}, 90, 5, 0));
}

TEST(BestCut, LeavesOutRollsOfNoValue) {
  const std::vector<Roll> rolls{{30, 0}, {20, -1}, {40, 1}};
  EXPECT_THAT(bestCut(rolls, 100, 5, 0)->rolls, ElementsAre(2, 2));
  EXPECT_THAT(bestCut(rolls, 100, 5, -10)->rolls, ElementsAre(2, 2));
}

TEST(BestCut, TakesTheFirstOfEqualRolls) {
  EXPECT_THAT(bestCut({{30, 5}, {30, 5}, {30, 4}}, 40, 1, 0)->rolls, ElementsAre(0));
}

}  // namespace

}  // namespace corvane::plan
