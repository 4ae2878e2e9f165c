#include "core/exchange_sort.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLinkedList>
#include <random>
#include <set>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Pair;

const auto kFirstGreater = [](const auto &a, const auto &b) { return a.first > b.first; };

TEST(ExchangeSort, EmptyAndSingleSequencesStay) {
  std::vector<int> none;
  exchangeSort(none, std::greater<>());
  EXPECT_TRUE(none.empty());
  std::vector<int> one{4};
  exchangeSort(one, std::greater<>());
  EXPECT_THAT(one, ElementsAre(4));
}

TEST(ExchangeSort, TiesEndUpWhereTheExchangesLeaveThem) {
  // 3a 3b 1 -> the exchange with 1 carries 3a behind 3b.
  std::vector<std::pair<int, char>> items{{3, 'a'}, {3, 'b'}, {1, 'c'}};
  exchangeSort(items, kFirstGreater);
  EXPECT_THAT(items, ElementsAre(Pair(1, 'c'), Pair(3, 'b'), Pair(3, 'a')));
}

TEST(ExchangeSort, SwapsAsTheTwoLoopsSay) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::pair<int, int>> items;
    const auto size = static_cast<int>(random() % 12);
    for (int at = 0; at < size; ++at) {
      items.emplace_back(static_cast<int>(random() % 4), at);
    }
    std::vector<std::pair<int, int>> expected = items;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      for (std::size_t j = i + 1; j < expected.size(); ++j) {
        if (expected[i].first > expected[j].first) {
          std::swap(expected[i], expected[j]);
        }
      }
    }
    exchangeSort(items, kFirstGreater);
    ASSERT_EQ(items, expected);
  }
}

TEST(SortDistinct, GivesTheOrderOfTheExchangeSort) {
  std::mt19937 random(6);
  for (int round = 0; round < 100; ++round) {
    std::set<int> distinct;
    for (int at = 0; at < 20; ++at) {
      distinct.insert(static_cast<int>(random() % 100));
    }
    std::vector<int> items(distinct.begin(), distinct.end());
    std::shuffle(items.begin(), items.end(), random);
    std::vector<int> exchanged = items;
    exchangeSort(exchanged, std::greater<>());
    QLinkedList<int> linked;
    for (const int item : items) {
      linked.append(item);
    }
    sortDistinct(linked);
    ASSERT_EQ(std::vector<int>(linked.cbegin(), linked.cend()), exchanged);
  }
}

}  // namespace
}  // namespace corvane
