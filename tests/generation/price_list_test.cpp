#include "generation/price_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "generation/price_list_of.h"
#include "support/literal_pricing.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<double> widthsOf(const PriceList &prices) {
  std::vector<double> widths;
  for (int at = 0; at < prices.count(); ++at) {
    widths.push_back(prices[at].width);
  }
  return widths;
}

TEST(PriceList, HoldsWidthDualAndRatioOfEveryRowBestRatioFirst) {
  const PriceList prices = priceList({60, 40, 20}, {30, 40, 15});
  ASSERT_EQ(prices.count(), 3);
  EXPECT_THAT(widthsOf(prices), ElementsAre(40, 20, 60));
  EXPECT_EQ(prices[0].dual, 40);
  EXPECT_EQ(prices[0].ratio, 1);
  EXPECT_EQ(prices[1].ratio, 0.75);
  EXPECT_EQ(prices[2].ratio, 0.5);
}

TEST(PriceList, TakesADualThatIsNoNumberAsNotLessThanAnyOther) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const PriceList prices = priceList({60, 40, 20}, {30, none, 15});
  const std::vector<support::LiteralPrice> literal =
      support::literalPriceList({60, 40, 20}, {30, none, 15});
  for (const double freeWidth : {10.0, 20.0, 45.0, 60.0}) {
    EXPECT_EQ(prices.bestFitting(freeWidth), support::literalBestFitting(literal, freeWidth))
        << freeWidth;
  }
}

TEST(PriceList, LeavesWhatIsNoNumberWhereTheExchangeSortLeavesIt) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  // 5, 4, 3, 2, 1 with the ratios 1, none, 3, 2, none: 3 changes places with 1, and then 2 with 1
  // where it stands behind what is no number.
  EXPECT_THAT(widthsOf(priceList({5, 4, 3, 2, 1}, {5, none, 9, 4, none})),
              ElementsAre(3, 4, 2, 5, 1));
}

TEST(PriceList, GivesAWidthOfZeroTheRatioZero) {
  const PriceList prices = priceList({60, 10, 0}, {30, -5, 7});
  EXPECT_THAT(widthsOf(prices), ElementsAre(60, 0, 10));
  EXPECT_EQ(prices[1].ratio, 0);
}

// Exchange for ratios 1, 2, 2, 3: the first round carries 1 to the end past the 2s, which changes
// places with each, so that equal ratios do not keep the order of their rows.
TEST(PriceList, LeavesEqualRatiosWhereTheExchangeSortLeavesThem) {
  EXPECT_THAT(widthsOf(priceList({8, 4, 2, 1}, {8, 8, 4, 3})), ElementsAre(1, 2, 4, 8));
  EXPECT_THAT(widthsOf(priceList({8, 4, 2, 1}, {16, 8, 4, 2})), ElementsAre(8, 4, 2, 1));
}

TEST(PriceList, IsEmptiedBeforeItIsBuiltAnew) {
  PriceList prices = priceList({60, 40, 20}, {30, 40, 15});
  const std::vector<double> duals{1};
  prices.rebuild({10}, duals);
  EXPECT_THAT(widthsOf(prices), ElementsAre(10));
  prices.rebuild({}, {});
  EXPECT_THAT(widthsOf(prices), IsEmpty());
  EXPECT_EQ(prices.bestFitting(100), PriceList::kNone);
}

TEST(BestFittingEntry, HasTheGreatestDualOfThoseNotWiderThanTheFreeWidth) {
  const PriceList prices = priceList({60, 40, 20}, {90, 20, 15});
  EXPECT_EQ(prices[prices.bestFitting(60)].width, 60);
  EXPECT_EQ(prices[prices.bestFitting(std::nextafter(60, 0))].width, 40);
  EXPECT_EQ(prices[prices.bestFitting(39)].width, 20);
  EXPECT_EQ(prices.bestFitting(19), PriceList::kNone);
}

TEST(BestFittingEntry, IsTheLastOfThoseWithEqualDuals) {
  // Ratios 0.5, 0.25 and 1: the list is 20, 40, 80.
  const PriceList prices = priceList({80, 40, 20}, {20, 20, 20});
  EXPECT_THAT(widthsOf(prices), ElementsAre(20, 40, 80));
  EXPECT_EQ(prices.bestFitting(100), 2);
  EXPECT_EQ(prices.bestFitting(50), 1);
}

TEST(BestFittingEntry, IsNeverOneWithANegativeDual) {
  const PriceList prices = priceList({60, 40, 20}, {90, -1e-300, -15});
  EXPECT_EQ(prices.bestFitting(59), PriceList::kNone);
}

TEST(BestFittingEntry, MayHaveADualOfZeroOfEitherSign) {
  EXPECT_EQ(priceList({60, 40}, {90, 0.0}).bestFitting(59), 1);
  EXPECT_EQ(priceList({60, 40}, {90, -0.0}).bestFitting(59), 1);
}

// Numbers with many ties: the ratios of small integers.
class GeneratedPriceLists : public testing::Test {
 protected:
  double dual() {
    switch (random_() % 12) {
      case 0:
        return 0.0;
      case 1:
        return -0.0;
      case 2:
        return kInfinity;
      case 3:
        return -kInfinity;
      case 4:
        return 1e308;
      case 5:
        return std::nextafter(static_cast<double>(random_() % 9), 100.0);
      default:
        return static_cast<double>(random_() % 13) - 4.0;
    }
  }

  double width() {
    const double numbers[] = {0.0, 1e-300, kInfinity, 30.5, std::nextafter(30.5, 31.0)};
    const auto pick = random_() % 16;
    return pick < 5 ? numbers[pick] : static_cast<double>(random_() % 40);
  }

  void draw() {
    const std::size_t count = random_() % 30;
    widths_.clear();
    duals_.clear();
    for (std::size_t at = 0; at < count; ++at) {
      widths_.push_back(width());
      duals_.push_back(dual());
    }
  }

  void expectAgreement() {
    const PriceList prices = priceList(widths_, duals_);
    const std::vector<support::LiteralPrice> literal = support::literalPriceList(widths_, duals_);
    ASSERT_EQ(static_cast<std::size_t>(prices.count()), literal.size());
    for (std::size_t at = 0; at < literal.size(); ++at) {
      const PriceEntry &entry = prices[static_cast<int>(at)];
      ASSERT_EQ(entry.width, literal[at].width);
      ASSERT_EQ(entry.dual, literal[at].dual);
      // An infinite dual of an infinite width has no ratio.
      ASSERT_TRUE(entry.ratio == literal[at].ratio ||
                  (std::isnan(entry.ratio) && std::isnan(literal[at].ratio)));
    }
    for (int free = 0; free < 20; ++free) {
      const double freeWidth = width();
      ASSERT_EQ(prices.bestFitting(freeWidth), support::literalBestFitting(literal, freeWidth));
    }
  }

  std::mt19937 random_{20240229};
  std::vector<double> widths_;
  std::vector<double> duals_;
};

TEST_F(GeneratedPriceLists, StandInTheOrderOfTheExchangeSortAndFitAsAScanDoes) {
  for (int round = 0; round < 5000; ++round) {
    draw();
    ASSERT_NO_FATAL_FAILURE(expectAgreement()) << "round " << round;
  }
}

// Every list of up to 7 ratios out of 4, each row told apart by its width.
TEST_F(GeneratedPriceLists, OfFewRatiosStandInTheOrderOfTheExchangeSort) {
  constexpr int kRatios = 4;
  constexpr int kMostRows = 7;
  int lists = 1;
  for (int rows = 0; rows <= kMostRows; ++rows, lists *= kRatios) {
    for (int list = 0; list < lists; ++list) {
      widths_.clear();
      duals_.clear();
      for (int row = 0, rest = list; row < rows; ++row, rest /= kRatios) {
        widths_.push_back(std::ldexp(1.0, rows - row));
        duals_.push_back(widths_.back() * (rest % kRatios));
      }
      ASSERT_NO_FATAL_FAILURE(expectAgreement()) << rows << " rows, list " << list;
    }
  }
}

// As they stand in a run: rows from the widest to the narrowest, hardly a tie, a few at the most.
TEST_F(GeneratedPriceLists, OfDescendingWidthsStandInTheOrderOfTheExchangeSortAndFitAsAScanDoes) {
  for (int round = 0; round < 500; ++round) {
    const std::size_t count = random_() % 200;
    widths_.clear();
    duals_.clear();
    for (std::size_t at = 0; at < count; ++at) {
      widths_.push_back(static_cast<double>(count - at) / 4);
      duals_.push_back(static_cast<double>(random_() % 1000000) * widths_.back());
    }
    if (round % 2 == 0 && count > 2) {
      duals_[random_() % count] = 0;
      duals_[random_() % count] = 0;
    }
    ASSERT_NO_FATAL_FAILURE(expectAgreement()) << "round " << round;
  }
}

}  // namespace
}  // namespace corvane
