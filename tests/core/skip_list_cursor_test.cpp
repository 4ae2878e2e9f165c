#include "core/skip_list_cursor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <set>
#include <utility>

#include "core/comparison.h"
#include "support/skip_list_dump.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Numbers = skipList<double>;

class CursorTest : public testing::Test {
 protected:
  void fill(std::initializer_list<double> values) {
    for (const double value : values) {
      list_.insert(&numbers_.emplace_back(value));
    }
  }
  double *number(double value) { return &numbers_.emplace_back(value); }

  DoubleComp comparator_;
  Numbers list_{&comparator_, false, 3};

 private:
  std::deque<double> numbers_;
};

TEST_F(CursorTest, FirstOfAnEmptyListIs1AndNextIsNull) {
  SkipListCursor<double> cursor(list_);
  double *element = number(9);
  EXPECT_EQ(cursor.first(element), 1);
  EXPECT_EQ(element, nullptr);
  EXPECT_EQ(cursor.next(), nullptr);
  EXPECT_EQ(cursor.next(), nullptr);
}

TEST_F(CursorTest, FirstLeavesTheCursorBeforeTheFirstElement) {
  fill({2, 1});
  SkipListCursor<double> cursor(list_);
  double *element = nullptr;
  EXPECT_EQ(cursor.first(element), 0);
  EXPECT_EQ(*element, 1);
  EXPECT_EQ(*cursor.next(), 1);
}

TEST_F(CursorTest, NextHandsOverEveryElementOnceInListOrder) {
  fill({3, 1, 2});
  SkipListCursor<double> cursor(list_);
  double *element = nullptr;
  cursor.first(element);
  std::vector<double> seen;
  while (const double *next = cursor.next()) {
    seen.push_back(*next);
  }
  EXPECT_THAT(seen, ElementsAre(1, 2, 3));
  EXPECT_EQ(cursor.next(), nullptr);
}

TEST_F(CursorTest, ANewCursorStartsAtTheHeadWithoutFirst) {
  fill({5});
  SkipListCursor<double> cursor(list_);
  EXPECT_EQ(*cursor.next(), 5);
  EXPECT_EQ(cursor.next(), nullptr);
}

TEST_F(CursorTest, FirstStartsAnExhaustedCursorAgain) {
  fill({5});
  SkipListCursor<double> cursor(list_);
  cursor.next();
  double *element = nullptr;
  EXPECT_EQ(cursor.first(element), 0);
  EXPECT_EQ(*cursor.next(), 5);
}

TEST_F(CursorTest, AfterTheLastElementTheCursorIsOnNothingEvenIfTheListGrows) {
  fill({1, 2});
  SkipListCursor<double> cursor(list_);
  cursor.next();
  EXPECT_EQ(*cursor.next(), 2);
  fill({3});
  EXPECT_EQ(cursor.next(), nullptr);
}

TEST_F(CursorTest, ElementsThatComeAheadOfTheCursorAreHandedOver) {
  fill({1, 9});
  SkipListCursor<double> cursor(list_);
  EXPECT_EQ(*cursor.next(), 1);
  fill({5});
  EXPECT_EQ(*cursor.next(), 5);
  EXPECT_EQ(*cursor.next(), 9);
}

TEST_F(CursorTest, ACursorOnTheHeadSurvivesTheGrowthOfTheList) {
  SkipListCursor<double> cursor(list_);
  SkipListInspector<double>::setRandomState(list_, 0x00100000U);
  fill({5});
  ASSERT_GT(list_.levelCount(), 3);
  EXPECT_EQ(*cursor.next(), 5);
}

TEST_F(CursorTest, CursorsOfOneListAreIndependent) {
  fill({1, 2});
  SkipListCursor<double> a(list_);
  SkipListCursor<double> b(list_);
  EXPECT_EQ(*a.next(), 1);
  EXPECT_EQ(*a.next(), 2);
  EXPECT_EQ(*b.next(), 1);
}

TEST_F(CursorTest, ForEachElementVisitsAllInOrder) {
  std::vector<double> seen;
  forEachElement(list_, [&](double value) { seen.push_back(value); });
  EXPECT_THAT(seen, IsEmpty());
  fill({2, 3, 1});
  forEachElement(list_, [&](double value) { seen.push_back(value); });
  EXPECT_THAT(seen, ElementsAre(1, 2, 3));
}

// Elements with a group and a member, ordered by both; groups are runs of one group.
using Element = std::pair<int, int>;

class ElementComp : public Comparison<Element> {
 public:
  int compare(const Element &a, const Element &b) const override { return compareKeys(a, b); }
};

class GroupComp : public Comparison<Element> {
 public:
  int compare(const Element &a, const Element &b) const override {
    scratchWords.insert(scratch(0) * 100 + scratch(1) * 10 + scratch(2));
    ++calls;
    return compareKeys(a.first, b.first);
  }
  mutable std::set<int> scratchWords;
  mutable int calls = 0;
};

class GroupCursorTest : public testing::Test {
 protected:
  void fill(const std::vector<Element> &elements) {
    for (const Element &element : elements) {
      elements_.push_back(element);
      list_.insert(&elements_.back());
    }
  }

  static std::vector<Element> rest(SkipListGroupCursor<Element> &cursor) {
    std::vector<Element> members;
    while (const Element *element = cursor.next()) {
      members.push_back(*element);
    }
    return members;
  }

  std::vector<std::vector<Element>> groups() {
    std::vector<std::vector<Element>> all;
    SkipListGroupCursor<Element> cursor(list_, grouping_);
    Element *element = nullptr;
    for (int at = cursor.firstGroup(element); at == 0; at = cursor.nextGroup(element)) {
      all.push_back(rest(cursor));
      EXPECT_EQ(all.back().front(), *element);
    }
    return all;
  }

  ElementComp comparator_;
  GroupComp grouping_;
  skipList<Element> list_{&comparator_, false, 2};

 private:
  std::deque<Element> elements_;
};

TEST_F(GroupCursorTest, AnEmptyListHasNoGroup) {
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  Element *element = nullptr;
  EXPECT_EQ(cursor.firstGroup(element), 1);
  EXPECT_EQ(element, nullptr);
  EXPECT_EQ(cursor.next(), nullptr);
  EXPECT_EQ(cursor.nextGroup(element), 1);
}

TEST_F(GroupCursorTest, BeforeTheFirstGroupNothingIsHandedOver) {
  fill({{1, 1}});
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  EXPECT_EQ(cursor.next(), nullptr);
}

TEST_F(GroupCursorTest, GroupsAreHandedOverElementByElementInListOrder) {
  fill({{2, 1}, {1, 2}, {1, 1}, {3, 1}, {2, 2}, {1, 3}});
  EXPECT_THAT(groups(),
              ElementsAre(ElementsAre(Element(1, 1), Element(1, 2), Element(1, 3)),
                          ElementsAre(Element(2, 1), Element(2, 2)), ElementsAre(Element(3, 1))));
}

TEST_F(GroupCursorTest, TheNextGroupFollowsEvenWhenTheCurrentOneWasNotReadOut) {
  fill({{1, 1}, {1, 2}, {2, 1}});
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  Element *element = nullptr;
  ASSERT_EQ(cursor.firstGroup(element), 0);
  ASSERT_EQ(cursor.nextGroup(element), 0);
  EXPECT_EQ(*element, Element(2, 1));
  EXPECT_THAT(rest(cursor), ElementsAre(Element(2, 1)));
  EXPECT_EQ(cursor.nextGroup(element), 1);
  EXPECT_EQ(element, nullptr);
  EXPECT_EQ(cursor.next(), nullptr);
}

TEST_F(GroupCursorTest, FirstGroupStartsAgain) {
  fill({{1, 1}, {2, 1}});
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  Element *element = nullptr;
  cursor.firstGroup(element);
  cursor.nextGroup(element);
  EXPECT_EQ(cursor.firstGroup(element), 0);
  EXPECT_THAT(rest(cursor), ElementsAre(Element(1, 1)));
}

TEST_F(GroupCursorTest, AGroupIsFoundByItsKey) {
  fill({{1, 1}, {3, 1}, {3, 2}, {5, 1}});
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  Element *element = nullptr;
  ASSERT_EQ(cursor.findGroup({3, 99}, element), 0);
  EXPECT_EQ(*element, Element(3, 1));
  EXPECT_THAT(rest(cursor), ElementsAre(Element(3, 1), Element(3, 2)));
  for (const int absent : {0, 2, 4, 6}) {
    EXPECT_EQ(cursor.findGroup({absent, 1}, element), 1) << absent;
  }
}

TEST_F(GroupCursorTest, TheScratchWordsOfTheGroupingComparatorAreSetWhileTheEndIsLookedFor) {
  fill({{1, 1}, {1, 2}, {2, 1}});
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  Element *element = nullptr;
  cursor.firstGroup(element);
  EXPECT_THAT(grouping_.scratchWords, ElementsAre(100));
  EXPECT_EQ(grouping_.scratch(0), 0);
}

TEST_F(GroupCursorTest, TheEndOfAGroupIsFoundByTheLevels) {
  std::vector<Element> elements;
  for (int at = 0; at < 4000; ++at) {
    elements.emplace_back(at / 2000, at);
  }
  fill(elements);
  SkipListGroupCursor<Element> cursor(list_, grouping_);
  Element *element = nullptr;
  cursor.firstGroup(element);
  EXPECT_LT(grouping_.calls, 80);
}

TEST_F(GroupCursorTest, RandomListsFallIntoTheGroupsOfAPlainWalk) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    list_.clear();
    std::set<Element> sorted;
    const auto size = static_cast<int>(random() % 60);
    for (int at = 0; at < size; ++at) {
      sorted.emplace(static_cast<int>(random() % 8), static_cast<int>(random() % 20));
    }
    fill({sorted.begin(), sorted.end()});
    std::vector<std::vector<Element>> expected;
    for (const Element &element : sorted) {
      if (expected.empty() || expected.back().front().first != element.first) {
        expected.emplace_back();
      }
      expected.back().push_back(element);
    }
    ASSERT_EQ(groups(), expected) << round;
  }
}

}  // namespace
}  // namespace corvane
