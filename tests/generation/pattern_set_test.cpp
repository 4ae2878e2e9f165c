#include "generation/pattern_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "core/skip_list_cursor.h"
#include "support/pattern_set_dump.h"

namespace corvane {
namespace {

using support::addPattern;
using support::dump;
using support::makePattern;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kDeckle = 100;

int compareWidths(const std::vector<double> &a, const std::vector<double> &b) {
  const PatternCompPattern order("Fine", kDeckle);
  auto patternA = makePattern(kDeckle, a);
  auto patternB = makePattern(kDeckle, b);
  patternA->trim = patternB->trim = 0;
  const int result = order.compare(*patternA, *patternB);
  EXPECT_EQ(order.compare(*patternB, *patternA), -result);
  return result;
}

int compareTrims(double a, double b) {
  const PatternCompPattern order("Fine", kDeckle);
  return order.compare(Pattern(a), Pattern(b));
}

TEST(PatternCompPattern, FindsEqualWidthsInAnotherOrderEqualOnlyOnceBothAreSorted) {
  const PatternCompPattern order("Fine", kDeckle);
  const auto a = makePattern(kDeckle, {30, 45, 12});
  const auto b = makePattern(kDeckle, {12, 30, 45});
  EXPECT_EQ(order.compare(*a, *b), 1);
  sortWidthsDescending(*a);
  sortWidthsDescending(*b);
  EXPECT_EQ(order.compare(*a, *b), 0);
}

TEST(PatternCompPattern, FindsWidthsHalfTheToleranceApartEqual) {
  EXPECT_EQ(compareWidths({30}, {30 + 0.5e-8}), 0);
}

TEST(PatternCompPattern, TellsApartWidthsTwiceTheToleranceApart) {
  EXPECT_EQ(compareWidths({30}, {30 + 2e-8}), -1);
}

TEST(PatternCompPattern, TakesADifferenceOfTheToleranceItselfForEqual) {
  EXPECT_EQ(compareWidths({1e-8}, {0}), 0);
  EXPECT_EQ(compareTrims(1e-8, 0), 0);
}

TEST(PatternCompPattern, OrdersFewerWidthsFirstWhateverTheWidths) {
  EXPECT_EQ(compareWidths({90}, {1, 1}), -1);
  EXPECT_EQ(compareWidths({}, {1}), -1);
}

TEST(PatternCompPattern, ComparesWidthsPairwiseSmallerFirst) {
  EXPECT_EQ(compareWidths({45, 30, 12}, {45, 30, 11}), 1);
  EXPECT_EQ(compareWidths({44, 30, 12}, {45, 1, 1}), -1);
}

TEST(PatternCompPattern, ComparesTheTrimLast) {
  EXPECT_EQ(compareTrims(1, 2), -1);
  EXPECT_EQ(compareTrims(2, 1), 1);
  EXPECT_EQ(compareTrims(2, 2 + 0.5e-8), 0);
  EXPECT_EQ(compareTrims(2, 2 + 2e-8), -1);
}

TEST(PatternCompPattern, IsTheDescriptionOfItsSet) {
  const PatternCompPattern set("Fine", 120.5);
  EXPECT_EQ(set.grade, "Fine");
  EXPECT_EQ(set.deckleWidth, 120.5);
  EXPECT_EQ(set.patterns->count(), 0);
  EXPECT_TRUE(set.redCostSets.isEmpty());
  EXPECT_TRUE(set.redCostComps.isEmpty());
  for (int word = 0; word < 3; ++word) {
    EXPECT_EQ(set.scratch(word), 0);
  }
}

TEST(PatternSet, HoldsItsPatternsInOrderAndRefusesAnEqualOne) {
  PatternCompPattern set("Fine", kDeckle);
  addPattern(set, {45, 45});
  addPattern(set, {30, 30, 30});
  addPattern(set, {45, 30});
  addPattern(set, {90});
  EXPECT_EQ(addPattern(set, {45, 30}), nullptr);
  EXPECT_EQ(addPattern(set, {45 + 0.5e-8, 30}), nullptr);
  EXPECT_EQ(dump(set),
            "Fine 100:\n"
            "90 trim 10\n"
            "45 30 trim 25\n"
            "45 45 trim 10\n"
            "30 30 30 trim 10\n");
}

int compareCosts(const QLinkedList<double> &a, const QLinkedList<double> &b, int period) {
  Pattern patternA(0);
  Pattern patternB(0);
  patternA.reducedCosts = a;
  patternB.reducedCosts = b;
  const PatternCompRedCost order(period);
  const int result = order.compare(patternA, patternB);
  EXPECT_EQ(order.compare(patternB, patternA), -result);
  return result;
}

TEST(PatternCompRedCost, OrdersTheMostNegativeFirst) {
  EXPECT_EQ(compareCosts({-2}, {-1}, 0), -1);
  EXPECT_EQ(compareCosts({0}, {3}, 0), -1);
}

TEST(PatternCompRedCost, ComparesTheCostsOfItsPeriod) {
  for (int period = 0; period < 5; ++period) {
    QLinkedList<double> lower;
    for (int at = 0; at < 5; ++at) {
      lower.append(at == period ? -1 : 7);
    }
    EXPECT_EQ(compareCosts(lower, {0, 0, 0, 0, 0}, period), -1) << period;
  }
}

TEST(PatternCompRedCost, TakesCostsWithinTheToleranceForEqual) {
  EXPECT_EQ(compareCosts({1}, {1 + 0.5e-8}, 0), 0);
  EXPECT_EQ(compareCosts({1}, {1 + 2e-8}, 0), -1);
}

TEST(PatternCompRedCost, FallsBackToTheWidthsAndThenToTheTrim) {
  const PatternCompRedCost order(0);
  const auto a = makePattern(kDeckle, {30, 12});
  const auto b = makePattern(kDeckle, {30, 11});
  const auto shorter = makePattern(kDeckle, {90});
  for (const auto &pattern : {a.get(), b.get(), shorter.get()}) {
    pattern->reducedCosts.append(-4);
  }
  EXPECT_EQ(order.compare(*a, *b), 1);
  EXPECT_EQ(order.compare(*shorter, *b), -1);
  b->widths = a->widths;
  EXPECT_EQ(order.compare(*a, *b), -1);  // trim 58 and 59
}

TEST(PatternCompRedCost, IsHeldWithItsSetForEachPeriodInTurn) {
  PatternCompPattern set("Fine", kDeckle);
  Pattern *cheap = addPattern(set, {30, 30});
  Pattern *dear = addPattern(set, {90});
  cheap->reducedCosts = {-1, 5};
  dear->reducedCosts = {0, 0};
  for (int period = 0; period < 2; ++period) {
    std::vector<PricedPattern> priced = {{0.0, 0, dear}, {period == 0 ? -1.0 : 5.0, 1, cheap}};
    set.addRedCostSet(priced, true);
  }
  ASSERT_EQ(set.redCostComps.size(), 2);
  EXPECT_EQ(set.redCostComps.first()->period, 0);
  EXPECT_EQ(set.redCostComps.last()->period, 1);
  ASSERT_EQ(set.redCostSets.size(), 2);
  EXPECT_EQ(dump(*set.redCostSets.first()), "30 30 trim 40 cost [-1 5]\n90 trim 10 cost [0 0]\n");
  EXPECT_EQ(dump(*set.redCostSets.last()), "90 trim 10 cost [0 0]\n30 30 trim 40 cost [-1 5]\n");
}

TEST(PatternSets, StandInOrderOfCreationAndByGrade) {
  PatternSets sets;
  sets.add("Fine", 120);
  sets.add("Board", 120);
  sets.add("Fine", 80);
  EXPECT_EQ(dump(sets), "Fine 120:\nBoard 120:\nFine 80:\n");
  ASSERT_EQ(sets.ofGrade("Fine").size(), 2U);
  EXPECT_EQ(sets.ofGrade("Fine")[0]->deckleWidth, 120);
  EXPECT_EQ(sets.ofGrade("Fine")[1]->deckleWidth, 80);
  EXPECT_EQ(sets.ofGrade("Board").size(), 1U);
  EXPECT_THAT(sets.ofGrade("fine"), IsEmpty());
}

TEST(PatternSets, CountFromZero) {
  const PatternSets sets;
  EXPECT_EQ(sets.totalPatterns, 0);
  EXPECT_EQ(sets.duplicates, 0);
}

TEST(Pruning, DropsAPatternThatIsInTheModelInNoPeriodAndKeepsOneOfTheLastPeriod) {
  PatternSets sets;
  PatternCompPattern &set = sets.add("Fine", kDeckle);
  addPattern(set, {90})->inModel = {0, 0, 0};
  addPattern(set, {45, 45})->inModel = {0, 0, 1};
  addPattern(set, {30, 30, 30})->inModel = {1, 1, 0};
  prunePatterns(sets);
  EXPECT_EQ(dump(set),
            "Fine 100:\n"
            "45 45 trim 10 in [0 0 1]\n"
            "30 30 30 trim 10 in [1 1 0]\n");
}

TEST(Pruning, MakesANewSetOfTheSameOrder) {
  PatternSets sets;
  PatternCompPattern &set = sets.add("Fine", kDeckle);
  Pattern *kept = addPattern(set, {45, 45});
  kept->inModel = {1};
  const skipList<Pattern> *old = set.patterns;
  prunePatterns(sets);
  EXPECT_NE(set.patterns, old);
  Pattern *found = nullptr;
  EXPECT_EQ(set.patterns->search(*kept, found), 0);
  EXPECT_EQ(found, kept);
  EXPECT_EQ(addPattern(set, {45, 45}), nullptr);
}

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// The tested list against one that every pattern was inserted into, in the order of its set.
void expectListOfInsertions(PatternCompPattern &set, const std::vector<double> &costs,
                            bool isTotallyOrdered) {
  std::vector<PricedPattern> priced;
  PatternCompRedCost order(0);
  skipList<Pattern> expected(&order, false, 3);
  forEachElement(*set.patterns, [&](Pattern &pattern) {
    const double cost = costs[priced.size()];
    pattern.reducedCosts.append(cost);
    priced.push_back({cost, static_cast<qint32>(priced.size()), &pattern});
    expected.insert(&pattern);
  });
  set.addRedCostSet(priced, isTotallyOrdered);
  EXPECT_EQ(dump(*set.redCostSets.first()), dump(expected));
}

TEST(PatternCompRedCost, ListEqualsInsertionOneByOne) {
  const std::vector<std::vector<double>> runs = {
      {},
      {0.5},
      {3, -2, 0, 5, -7, 1, 4, 2},
      {0, 0, 0, 0, -0.0, 0},
      {1e-9, -1e-9, 0, 4e-9, -4e-9, 12, -12, 2e-9},
      {0, 0.9e-8, 1.8e-8, 2.7e-8, 3.6e-8, -1, 0.5e-8},
      {3.6e-8, 2.7e-8, 1.8e-8, 0.9e-8, 0, 1, 1, -1},
      {kNoNumber, kNoNumber, kNoNumber},
  };
  for (const std::vector<double> &costs : runs) {
    for (const bool isTotallyOrdered : {false, true}) {
      PatternCompPattern set("Fine", kDeckle);
      for (std::size_t i = 0; i < costs.size(); ++i) {
        addPattern(set, {10.0 + static_cast<double>(i)});
      }
      expectListOfInsertions(set, costs, isTotallyOrdered);
    }
  }
}

// The second pattern stands before the third by its first width, the first before the second by
// its second width, and the third before the first: what the list holds depends on who meets.
TEST(PatternCompRedCost, ListEqualsInsertionOneByOneWhereTheToleranceMakesACircle) {
  const double narrow = 10;
  const double between = 10 + 0.8e-8;
  const double wide = 10 + 1.6e-8;
  ASSERT_FALSE(ordersTotally({wide, between, narrow, 7, 6, 5}, kDeckle));
  PatternCompPattern set("Fine", kDeckle);
  Pattern *second = addPattern(set, {narrow, 7});
  Pattern *third = addPattern(set, {wide, 5});
  Pattern *first = addPattern(set, {between, 6});
  std::vector<Pattern *> order;
  forEachElement(*set.patterns, [&](Pattern &pattern) { order.push_back(&pattern); });
  ASSERT_THAT(order, testing::ElementsAre(first, second, third));
  expectListOfInsertions(set, {0, 5, 0}, false);
}

TEST(PatternOrder, IsTotalForWidthsFurtherApartThanTheTolerance) {
  EXPECT_TRUE(ordersTotally({30, 20, 10}, kDeckle));
  EXPECT_TRUE(ordersTotally({10}, kDeckle));
  EXPECT_TRUE(ordersTotally({}, kDeckle));
  EXPECT_TRUE(ordersTotally({10 + 2e-8, 10}, kDeckle));
  EXPECT_FALSE(ordersTotally({10 + 0.5e-8, 10}, kDeckle));
  EXPECT_FALSE(ordersTotally({30, 10 + 0.5e-8, 10}, kDeckle));
}

TEST(PatternOrder, IsNotTotalWhereTrimsRoundBeyondTheTolerance) {
  EXPECT_TRUE(ordersTotally({30, 20}, 1e6));
  EXPECT_FALSE(ordersTotally({30, 20}, 1.1e6));
}

TEST(Pruning, CoversEverySetAndEmptyOnesToo) {
  PatternSets sets;
  PatternCompPattern &fine = sets.add("Fine", kDeckle);
  PatternCompPattern &board = sets.add("Board", kDeckle);
  sets.add("Bond", kDeckle);
  addPattern(fine, {90})->inModel = {0};
  addPattern(board, {90})->inModel = {0};
  prunePatterns(sets);
  EXPECT_EQ(dump(sets), "Fine 100:\nBoard 100:\nBond 100:\n");
}

TEST(Pruning, DropsTheListsByReducedCost) {
  PatternSets sets;
  PatternCompPattern &set = sets.add("Fine", kDeckle);
  addPattern(set, {90});
  std::vector<PricedPattern> none;
  set.addRedCostSet(none, true);
  prunePatterns(sets);
  EXPECT_TRUE(set.redCostSets.isEmpty());
  EXPECT_TRUE(set.redCostComps.isEmpty());
}

}  // namespace
}  // namespace corvane
