#include "generation/pricing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "generation/price_list_of.h"
#include "support/literal_pricing.h"

namespace corvane {
namespace {

using support::LiteralCandidate;
using support::LiteralRandom;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<double> picks(const Candidate &candidate) {
  return {candidate.widths.begin(), candidate.widths.begin() + candidate.count};
}

PatternRandom randomOver(int entries) {
  PatternRandom random;
  random.setRange(0, static_cast<quint32>(entries) - 1U);
  return random;
}

quint32 pickSetSize(int widthCount, double percentage) {
  PatternRandom random;
  setPickRange(widthCount, percentage, random);
  EXPECT_EQ(random.low(), 0U);
  return random.high() + 1;
}

TEST(PickRange, Of40WidthsAtTenPercentHolds15) {
  EXPECT_EQ(pickSetSize(40, 10.0), 15U);
}

TEST(PickRange, Of200WidthsAtTenPercentHolds20) {
  EXPECT_EQ(pickSetSize(200, 10.0), 20U);
}

TEST(PickRange, Of8WidthsHolds8) {
  EXPECT_EQ(pickSetSize(8, 10.0), 8U);
}

TEST(PickRange, HoldsAtLeast15WhereThereAreSoMany) {
  EXPECT_EQ(pickSetSize(15, 1.0), 15U);
  EXPECT_EQ(pickSetSize(16, 1.0), 15U);
  EXPECT_EQ(pickSetSize(14, 1.0), 14U);
  EXPECT_EQ(pickSetSize(160, 10.0), 16U);
}

TEST(PickRange, IsTruncatedNotRounded) {
  EXPECT_EQ(pickSetSize(199, 10.0), 19U);
}

// 1000 x (2.9 / 100) is 28.999...; 1000 x 2.9 / 100 would be 29.
TEST(PickRange, DividesThePercentageBeforeItMultiplies) {
  EXPECT_EQ(pickSetSize(1000, 2.9), 28U);
}

TEST(PickRange, OfAllWidthsAtAHundredPercentHoldsAll) {
  EXPECT_EQ(pickSetSize(200, 100.0), 200U);
}

TEST(PickRange, StaysForAnEmptyList) {
  PatternRandom random;
  random.setRange(3, 77);
  setPickRange(0, 10.0, random);
  EXPECT_EQ(random.low(), 3U);
  EXPECT_EQ(random.high(), 77U);
}

TEST(Pricing, ANegativeDeckleWidthYieldsFoundWithAnEmptyPatternAndNoDraw) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_TRUE(priceCandidate(-0.5, priceList({10}, {1}), {100, 5}, random, candidate));
  EXPECT_THAT(picks(candidate), IsEmpty());
  EXPECT_EQ(candidate.trim, -0.5);
  EXPECT_EQ(random.state(), 1U);
}

TEST(Pricing, ADeckleWidthOfZeroFindsNothingAndDrawsNothing) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_FALSE(priceCandidate(0.0, priceList({10}, {1}), {100, 5}, random, candidate));
  EXPECT_EQ(random.state(), 1U);
}

TEST(Pricing, TakesTheDrawnWidthWhileItFits) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_TRUE(priceCandidate(100, priceList({30}, {40}), {1, 5}, random, candidate));
  EXPECT_THAT(picks(candidate), ElementsAre(30, 30, 30));
  EXPECT_EQ(candidate.trim, 10);
}

TEST(Pricing, AWidthThatFillsTheRestExactlyFits) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_TRUE(priceCandidate(60, priceList({30}, {40}), {1, 5}, random, candidate));
  EXPECT_THAT(picks(candidate), ElementsAre(30, 30));
  EXPECT_EQ(candidate.trim, 0);
}

TEST(Pricing, TheFallbackMayTakeAWidthBeyondThePickSet) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  // Only the first entry (70) is drawn; 30 is taken where 70 does not fit.
  EXPECT_TRUE(priceCandidate(100, priceList({70, 30}, {90, 20}), {1, 5}, random, candidate));
  EXPECT_THAT(picks(candidate), ElementsAre(70, 30));
}

TEST(Pricing, FailsWhenNothingFitsButWidthsOfNegativeDual) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  // 120 is drawn and does not fit; 30 fits, but its dual is negative.
  const PriceList prices = priceList({120, 30}, {1000, -1});
  EXPECT_FALSE(priceCandidate(100, prices, {7, 5}, random, candidate));
  // One draw an attempt.
  LiteralRandom literal{.high = 0};
  for (int attempt = 0; attempt < 7; ++attempt) {
    literal.draw();
  }
  EXPECT_EQ(random.state(), literal.state);
}

TEST(Pricing, RejectsAReducedCostOfHalfTheTolerance) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_FALSE(priceCandidate(1, priceList({1}, {1 + 0.5e-8}), {50, 5}, random, candidate));
}

TEST(Pricing, AcceptsAReducedCostOfTwiceTheTolerance) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_TRUE(priceCandidate(1, priceList({1}, {1 + 2e-8}), {50, 5}, random, candidate));
}

TEST(Pricing, AcceptsAReducedCostOfTheToleranceAndNoneAboveIt) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  const double tolerance = 1e-8;
  // The numbers are such that the subtraction is exact.
  ASSERT_EQ(tolerance - 2 * tolerance, -tolerance);
  EXPECT_TRUE(priceCandidate(tolerance, priceList({tolerance}, {2 * tolerance}), {1, 5}, random,
                             candidate));
  const double less = std::nextafter(2 * tolerance, 0.0);
  EXPECT_FALSE(
      priceCandidate(tolerance, priceList({tolerance}, {less}), {1, 5}, random, candidate));
}

TEST(Pricing, RejectsAPositiveReducedCostAndOneOfZero) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_FALSE(priceCandidate(1, priceList({1}, {0.5}), {50, 5}, random, candidate));
  EXPECT_FALSE(priceCandidate(1, priceList({1}, {1}), {50, 5}, random, candidate));
}

TEST(Pricing, NeverTakesMoreWidthsThanAllowed) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  const PriceList prices = priceList({1}, {100});
  for (int most = 0; most <= kMostWidthsInPattern; ++most) {
    const bool found = priceCandidate(50, prices, {1, most}, random, candidate);
    EXPECT_EQ(found, most > 0);
    EXPECT_THAT(picks(candidate), testing::SizeIs(static_cast<std::size_t>(most)));
    EXPECT_EQ(candidate.trim, 50 - most);
  }
}

TEST(Pricing, NothingIsDrawnWhereNoWidthIsAllowed) {
  PatternRandom random = randomOver(1);
  Candidate candidate;
  EXPECT_FALSE(priceCandidate(50, priceList({1}, {100}), {10, 0}, random, candidate));
  EXPECT_EQ(random.state(), 1U);
}

TEST(Pricing, StartsEveryAttemptAnew) {
  PatternRandom random = randomOver(2);
  random.seed(29778);
  Candidate candidate;
  // The list is 40, 60. The first attempt draws 60, which improves nothing, the second one 40.
  const PriceList prices = priceList({60, 40}, {50, 110});
  EXPECT_TRUE(priceCandidate(100, prices, {2, 1}, random, candidate));
  EXPECT_THAT(picks(candidate), ElementsAre(40));
  EXPECT_EQ(candidate.trim, 60);
  EXPECT_EQ(random.state(), 39976U);
}

// The program's pricing beside the literal one: same answer, same picks, same draws.
class PricingBesideTheLiteralOne : public testing::Test {
 protected:
  double dual() {
    switch (random_() % 10) {
      case 0:
        return 0.0;
      case 1:
        return -1.0 - static_cast<double>(random_() % 5);
      case 2:
        return random_() % 50 == 0 ? kInfinity : 1e-9;
      default:
        return static_cast<double>(random_() % 60) / 4.0;
    }
  }

  double width() {
    return random_() % 25 == 0 ? 0.0 : static_cast<double>(1 + random_() % 200) / 4.0;
  }

  double deckleWidth() {
    const double odd[] = {0.0, -0.0, -1.0, -1e-300, kInfinity, 1e-9, 1e308};
    const auto pick = random_() % 30;
    return pick < 7 ? odd[pick] : static_cast<double>(random_() % 500) / 4.0;
  }

  void draw() {
    const int count = 1 + static_cast<int>(random_() % 40);
    std::vector<double> widths;
    std::vector<double> duals;
    for (int at = 0; at < count; ++at) {
      widths.push_back(width());
      duals.push_back(dual());
    }
    prices_.rebuild(widths, duals);
    literalPrices_ = support::literalPriceList(widths, duals);
    setPickRange(count, static_cast<double>(1 + random_() % 100), generator_);
    literal_.high = generator_.high();
  }

  void price(int attempts) {
    const double deckle = deckleWidth();
    const int most = static_cast<int>(random_() % (kMostWidthsInPattern + 1));
    Candidate candidate;
    LiteralCandidate literalCandidate;
    literalCandidate.trim = deckle;
    std::vector<double> literalPicks;
    const bool found = priceCandidate(deckle, prices_, {attempts, most}, generator_, candidate);
    ASSERT_EQ(found, support::literalPrice(deckle, literalPrices_, attempts, most, literal_,
                                           literalCandidate, &literalPicks));
    ASSERT_EQ(generator_.state(), literal_.state);
    if (found) {
      ASSERT_EQ(picks(candidate), literalPicks);
      ASSERT_EQ(candidate.trim, literalCandidate.trim);
      ++found_;
    }
  }

  std::mt19937 random_{139968};
  PatternRandom generator_;
  LiteralRandom literal_;
  PriceList prices_;
  std::vector<support::LiteralPrice> literalPrices_;
  int found_ = 0;
};

TEST_F(PricingBesideTheLiteralOne, AgreesAttemptByAttempt) {
  for (int round = 0; round < 4000; ++round) {
    draw();
    for (int attempt = 0; attempt < 10; ++attempt) {
      ASSERT_NO_FATAL_FAILURE(price(1)) << "round " << round;
    }
  }
  EXPECT_GT(found_, 4000);
}

TEST_F(PricingBesideTheLiteralOne, AgreesOverManyAttempts) {
  for (int round = 0; round < 4000; ++round) {
    draw();
    ASSERT_NO_FATAL_FAILURE(price(1 + static_cast<int>(random_() % 100))) << "round " << round;
  }
  EXPECT_GT(found_, 1000);
}

}  // namespace
}  // namespace corvane
