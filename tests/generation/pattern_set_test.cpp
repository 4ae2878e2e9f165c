#include "generation/pattern_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "core/skip_list_cursor.h"
#include "support/pattern_set_dump.h"

namespace corvane {
namespace {

using support::addPattern;
using support::dump;
using support::makePattern;
using support::widthsOf;
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

int compareCosts(PeriodValues<double> a, PeriodValues<double> b, int period) {
  Pattern patternA(0);
  Pattern patternB(0);
  patternA.reducedCosts = std::move(a);
  patternB.reducedCosts = std::move(b);
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
    PeriodValues<double> lower;
    for (int at = 0; at < 5; ++at) {
      lower.append(at == period ? -1 : 7);
    }
    EXPECT_EQ(compareCosts(std::move(lower), {0, 0, 0, 0, 0}, period), -1) << period;
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

TEST(ListsByReducedCost, AreMadeOnRequestOneAPeriod) {
  PatternCompPattern set("Fine", kDeckle);
  addPattern(set, {30, 30})->reducedCosts = {-1, 5};
  addPattern(set, {90})->reducedCosts = {0, 0};
  EXPECT_TRUE(set.redCostSets.isEmpty());
  set.makeRedCostSets(2);
  ASSERT_EQ(set.redCostComps.size(), 2);
  EXPECT_EQ(set.redCostComps.first()->period, 0);
  EXPECT_EQ(set.redCostComps.last()->period, 1);
  ASSERT_EQ(set.redCostSets.size(), 2);
  EXPECT_EQ(widthsOf(*set.redCostSets.first()), "30 30 | 90");
  EXPECT_EQ(widthsOf(*set.redCostSets.last()), "90 | 30 30");
}

TEST(ListsByReducedCost, AreMadeAnewWhenAskedForAgain) {
  PatternCompPattern set("Fine", kDeckle);
  Pattern *pattern = addPattern(set, {90});
  pattern->reducedCosts = {1, 2};
  set.makeRedCostSets(2);
  addPattern(set, {30})->reducedCosts = {0};
  set.makeRedCostSets(1);
  ASSERT_EQ(set.redCostSets.size(), 1);
  EXPECT_EQ(set.redCostComps.size(), 1);
  EXPECT_EQ(widthsOf(*set.redCostSets.first()), "30 | 90");
}

TEST(ListsByReducedCost, OfASetWithoutPatternsAreEmpty) {
  PatternCompPattern set("Fine", kDeckle);
  set.makeRedCostSets(3);
  ASSERT_EQ(set.redCostSets.size(), 3);
  EXPECT_EQ(set.redCostSets.first()->count(), 0);
}

// The list of a set whose single widths 10, 11, ... have these costs.
std::string listOf(const std::vector<double> &costs) {
  PatternCompPattern set("Fine", kDeckle);
  for (std::size_t at = 0; at < costs.size(); ++at) {
    addPattern(set, {10.0 + static_cast<double>(at)})->reducedCosts.append(costs[at]);
  }
  set.makeRedCostSets(1);
  return widthsOf(*set.redCostSets.first());
}

TEST(ListsByReducedCost, OrderByCostAndEqualCostsByWidths) {
  EXPECT_EQ(listOf({3, -2, 0, 5, -7, 1}), "14 | 11 | 12 | 15 | 10 | 13");
  EXPECT_EQ(listOf({0, -0.0, 1e-9, -1e-9, 0}), "10 | 11 | 12 | 13 | 14");
}

// Costs that are further apart than the tolerance, but not from those between them: each meets the
// others in the order of the set, and stays where it then belongs.
TEST(ListsByReducedCost, PutChainsOfEqualCostsWhereInsertionPutsThem) {
  EXPECT_EQ(listOf({0, 0.9e-8, 1.8e-8}), "10 | 11 | 12");
  // 11 equals 10 and orders after it by its width; 12 orders before 10 by its cost.
  EXPECT_EQ(listOf({1.8e-8, 0.9e-8, 0}), "12 | 10 | 11");
}

// What is no number compares equal to every cost, so the widths decide.
TEST(ListsByReducedCost, OrderWhatIsNoNumberByWidths) {
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(listOf({kNoNumber, kNoNumber, kNoNumber}), "10 | 11 | 12");
  EXPECT_EQ(listOf({5, kNoNumber, 1e9}), "10 | 11 | 12");
}

// Deckle widths beyond a million inches: the trims of equal widths may round further apart than the
// tolerance, and then these are two patterns in the set and in every list.
TEST(ListsByReducedCost, HoldPatternsOfEqualWidthsThatTheirTrimTellsApart) {
  constexpr double kHugeDeckle = 1e9;
  PatternCompPattern set("Fine", kHugeDeckle);
  for (const double trim : {kHugeDeckle - 30, std::nextafter(kHugeDeckle - 30, 0.0)}) {
    auto pattern = makePattern(kHugeDeckle, {30});
    pattern->trim = trim;
    pattern->reducedCosts = {1};
    ASSERT_EQ(set.patterns->insert(pattern.release()), skipList<Pattern>::kStored);
  }
  set.makeRedCostSets(1);
  EXPECT_EQ(set.redCostSets.first()->count(), 2);
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
  addPattern(set, {90})->reducedCosts = {0, 0};
  set.makeRedCostSets(2);
  prunePatterns(sets);
  EXPECT_TRUE(set.redCostSets.isEmpty());
  EXPECT_TRUE(set.redCostComps.isEmpty());
}

}  // namespace
}  // namespace corvane
