#include "core/skip_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <set>

#include "core/comparison.h"
#include "core/numbers.h"
#include "core/skip_list_cursor.h"
#include "support/heap_probe.h"
#include "support/scoped_pooling.h"
#include "support/skip_list_dump.h"

namespace corvane {
namespace {

using support::HeapProbe;
using support::ScopedPooling;
using testing::ElementsAre;
using testing::IsEmpty;

using Numbers = skipList<double>;

// Construction arguments for the parameters that tests lean on.
constexpr int kArgumentOfTwo = 2;
constexpr int kArgumentOfThree = 3;

// Level 32 at the next draw, for the parameter 2.
constexpr quint32 kHighestDraw = 1;

std::vector<double> values(const Numbers &list) {
  std::vector<double> all;
  forEachElement(list, [&](double value) { all.push_back(value); });
  return all;
}

class SkipListOfNumbers : public testing::Test {
 protected:
  double *number(double value) { return &numbers_.emplace_back(value); }

  DoubleComp comparator_;

 private:
  std::deque<double> numbers_;
};

TEST_F(SkipListOfNumbers, AnEmptyListFindsNothingAndHasNoPredecessor) {
  const Numbers list(&comparator_, false, kArgumentOfThree);
  double *element = number(1);
  EXPECT_EQ(list.search(5, element), 1);
  EXPECT_EQ(element, nullptr);
  EXPECT_EQ(list.count(), 0);
}

TEST_F(SkipListOfNumbers, ClearingAnEmptyListReturnsZero) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  EXPECT_EQ(list.clear(), 0);
}

TEST_F(SkipListOfNumbers, StartsWithThreeLevelsAndItsParameter) {
  const Numbers list(&comparator_, false, kArgumentOfThree);
  EXPECT_EQ(list.levelCount(), 3);
  EXPECT_EQ(list.levelParameter(), 3);
  EXPECT_EQ(NumbersInspector::randomState(list), 0x1E9EB544U);
  EXPECT_EQ(NumbersInspector::dump(list), "L0:\nL1:\nL2:\nfinger: - - -\n");
  EXPECT_EQ(Numbers(&comparator_, false, 8).levelParameter(), 8);
  EXPECT_EQ(Numbers(&comparator_, false, 77).levelParameter(), 4);
}

TEST_F(SkipListOfNumbers, AnEqualElementIsStoredOnceAndTheSecondInsertReturns2) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  double *first = number(5);
  double *existing = nullptr;
  EXPECT_EQ(list.insert(first, &existing), 0);
  EXPECT_EQ(existing, nullptr);
  EXPECT_EQ(list.insert(number(5), &existing), 2);
  EXPECT_EQ(existing, first);
  EXPECT_EQ(list.insert(number(5)), 2);
  EXPECT_EQ(list.count(), 1);
  EXPECT_THAT(values(list), ElementsAre(5));
}

TEST_F(SkipListOfNumbers, ARejectedElementDrawsNoLevel) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  list.insert(number(5));
  const quint32 state = NumbersInspector::randomState(list);
  list.insert(number(5));
  EXPECT_EQ(NumbersInspector::randomState(list), state);
}

TEST_F(SkipListOfNumbers, WithTheDuplicatesFlagAnEqualElementIsStoredToo) {
  Numbers list(&comparator_, true, kArgumentOfThree);
  double *first = number(5);
  double *second = number(5);
  EXPECT_EQ(list.insert(first), 0);
  EXPECT_EQ(list.insert(second), 0);
  EXPECT_EQ(list.count(), 2);
  EXPECT_THAT(NumbersInspector::level(list, 0), ElementsAre(second, first));
}

TEST_F(SkipListOfNumbers, StoresPointersAndCopiesNoElement) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  double *stored = number(5);
  list.insert(stored);
  double *found = nullptr;
  ASSERT_EQ(list.search(5, found), 0);
  EXPECT_EQ(found, stored);
}

TEST_F(SkipListOfNumbers, ASearchWithoutAMatchAnswersTheElementBefore) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  double *ten = number(10);
  double *twenty = number(20);
  list.insert(twenty);
  list.insert(ten);
  double *element = ten;
  EXPECT_EQ(list.search(5, element), 1);
  EXPECT_EQ(element, nullptr);
  EXPECT_EQ(list.search(15, element), 1);
  EXPECT_EQ(element, ten);
  EXPECT_EQ(list.search(25, element), 1);
  EXPECT_EQ(element, twenty);
}

TEST_F(SkipListOfNumbers, EverySearchRemembersThePredecessorOnLevelZero) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  double *ten = number(10);
  double *twenty = number(20);
  list.insert(ten);
  list.insert(twenty);
  double *element = nullptr;
  list.search(20, element);
  EXPECT_EQ(NumbersInspector::lastFound(list), ten);
  list.search(99, element);
  EXPECT_EQ(NumbersInspector::lastFound(list), twenty);
  list.search(10, element);
  EXPECT_TRUE(NumbersInspector::lastFoundIsHead(list));
}

// The levels of the first forty nodes, as they follow from the register's rule worked through apart
// from this program.
TEST_F(SkipListOfNumbers, LevelsAreThoseThatTheRegisterDraws) {
  const std::pair<int, const char *> levels[] = {
      {0, "2111121111111112312113111111211111111122"},
      {2, "4111231112212223614126221212311111111233"},
      {3, "3111121111111112513115111111211111111122"},
      {5, "1111111111111111211112111111111111111111"},
      {8, "2111111111111111212112111111111111111111"},
  };
  for (const auto &[argument, expected] : levels) {
    Numbers list(&comparator_, false, argument);
    std::string drawn;
    for (int value = 0; value < 40; ++value) {
      double *element = number(value);
      list.insert(element);
      drawn += std::to_string(NumbersInspector::levelOf(list, element));
    }
    EXPECT_EQ(drawn, expected) << argument;
  }
}

TEST_F(SkipListOfNumbers, TheDumpOfAFewInsertionsIsFixed) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (const double value : {40., 10., 30., 20., 50.}) {
    list.insert(number(value));
  }
  // The draws from the seed are 000 1 1 1 1 01 001 ...: levels 4, 1, 1, 1 and 2.
  EXPECT_EQ(NumbersInspector::dump(list),
            "L0: 10 20 30 40 50\n"
            "L1: 40 50\n"
            "L2: 40\n"
            "L3: 40\n"
            "finger: - - - -\n");
}

TEST_F(SkipListOfNumbers, AppendedElementsGetCountedLevels) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 1; value <= 8; ++value) {
    EXPECT_EQ(list.append(number(value)), 0);
  }
  EXPECT_EQ(NumbersInspector::dump(list),
            "L0: 1 2 3 4 5 6 7 8\n"
            "L1: 2 4 6 8\n"
            "L2: 4 8\n"
            "L3: 8\n"
            "finger: 8 8 8 8\n");
}

TEST_F(SkipListOfNumbers, CountedLevelsOfAnOddParameterAreOneLess) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  for (int value = 1; value <= 8; ++value) {
    list.append(number(value));
  }
  EXPECT_EQ(NumbersInspector::dump(list),
            "L0: 1 2 3 4 5 6 7 8\n"
            "L1: 4 8\n"
            "L2: 8\n"
            "finger: 8 8 8\n");
}

TEST_F(SkipListOfNumbers, AppendingDrawsNothing) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  list.append(number(1));
  EXPECT_EQ(NumbersInspector::randomState(list), 0x1E9EB544U);
}

TEST_F(SkipListOfNumbers, AnElementThatDoesNotOrderLastIsInserted) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  double *twenty = number(20);
  list.append(twenty);
  EXPECT_EQ(list.append(number(10)), 0);
  double *existing = nullptr;
  EXPECT_EQ(list.append(number(20), &existing), 2);
  EXPECT_EQ(existing, twenty);
  EXPECT_THAT(values(list), ElementsAre(10, 20));
}

TEST_F(SkipListOfNumbers, AppendingAfterTheLastWasRemovedGoesToTheNewEnd) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 1; value <= 8; ++value) {
    list.append(number(value));
  }
  list.remove(8);
  list.append(number(9));
  EXPECT_EQ(NumbersInspector::dump(list),
            "L0: 1 2 3 4 5 6 7 9\n"
            "L1: 2 4 6 9\n"
            "L2: 4 9\n"
            "L3: 9\n"
            "finger: 9 9 9 9\n");
}

TEST_F(SkipListOfNumbers, AppendingComparesWithTheLastElementOnly) {
  struct CountingComp : Comparison<double> {
    int compare(const double &a, const double &b) const override {
      ++calls;
      return compareKeys(a, b);
    }
    mutable int calls = 0;
  };
  CountingComp counting;
  Numbers list(&counting, false, kArgumentOfThree);
  for (int value = 0; value < 1000; ++value) {
    list.append(number(value));
  }
  EXPECT_EQ(counting.calls, 999);
}

TEST_F(SkipListOfNumbers, RemovingTakesTheElementOutAndKeepsIt) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  double *ten = number(10);
  list.insert(ten);
  list.insert(number(20));
  EXPECT_EQ(list.remove(10), ten);
  EXPECT_EQ(*ten, 10);
  EXPECT_EQ(list.remove(10), nullptr);
  EXPECT_EQ(list.count(), 1);
  EXPECT_THAT(values(list), ElementsAre(20));
}

TEST_F(SkipListOfNumbers, RemovingTheNodeThatAFingerEntryNamesLeavesTheFingerOnItsSuccessor) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 1; value <= 8; ++value) {
    list.append(number(value));
  }
  list.rewind();
  for (int value = 1; value < 4; ++value) {
    EXPECT_EQ(*list.step(), value);
  }
  list.remove(4);
  EXPECT_EQ(*NumbersInspector::finger(list, 0), 5);
  EXPECT_EQ(*list.step(), 5);
}

TEST_F(SkipListOfNumbers, RemovalRepointsTheFingerOfEveryLevelThatNamesTheNode) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 1; value <= 4; ++value) {
    list.append(number(value));
  }
  ASSERT_EQ(NumbersInspector::dump(list), "L0: 1 2 3 4\nL1: 2 4\nL2: 4\nfinger: 4 4 4\n");
  // Behind the finger, on levels 0 to 3.
  NumbersInspector::setRandomState(list, 0x10000000U);
  list.insert(number(9));
  ASSERT_EQ(NumbersInspector::dump(list),
            "L0: 1 2 3 4 9\nL1: 2 4 9\nL2: 4 9\nL3: 9\nfinger: 4 4 4 -\n");
  list.remove(4);
  EXPECT_EQ(NumbersInspector::dump(list), "L0: 1 2 3 9\nL1: 2 9\nL2: 9\nL3: 9\nfinger: 9 9 9 -\n");
  list.remove(9);
  EXPECT_EQ(NumbersInspector::dump(list), "L0: 1 2 3\nL1: 2\nL2:\nL3:\nfinger: - - - -\n");
}

TEST_F(SkipListOfNumbers, RemovalLeavesOtherFingersAlone) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 1; value <= 4; ++value) {
    list.append(number(value));
  }
  list.remove(3);
  EXPECT_EQ(NumbersInspector::dump(list), "L0: 1 2 4\nL1: 2 4\nL2: 4\nfinger: 4 4 4\n");
}

TEST_F(SkipListOfNumbers, OfEqualElementsTheFirstIsRemoved) {
  Numbers list(&comparator_, true, kArgumentOfThree);
  double *first = number(5);
  double *second = number(5);
  list.insert(first);
  list.insert(second);
  EXPECT_EQ(list.remove(5), second);
  EXPECT_EQ(list.remove(5), first);
  EXPECT_EQ(list.remove(5), nullptr);
}

TEST_F(SkipListOfNumbers, SteppingHandsOverEveryElementOnce) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  EXPECT_EQ(list.step(), nullptr);
  for (const double value : {3., 1., 2.}) {
    list.insert(number(value));
  }
  list.rewind();
  EXPECT_EQ(*list.step(), 1);
  EXPECT_EQ(*list.step(), 2);
  EXPECT_EQ(*list.step(), 3);
  EXPECT_EQ(list.step(), nullptr);
  list.rewind();
  EXPECT_EQ(*list.step(), 1);
}

TEST_F(SkipListOfNumbers, ClearReturnsTheNumberOfNodesAndDeletesNoElement) {
  Numbers list(&comparator_, false, kArgumentOfThree);
  for (int value = 0; value < 100; ++value) {
    list.insert(number(value));
  }
  EXPECT_EQ(list.clear(), 100);
  EXPECT_EQ(list.count(), 0);
  EXPECT_THAT(values(list), IsEmpty());
  EXPECT_EQ(list.clear(), 0);
}

TEST_F(SkipListOfNumbers, ClearKeepsParameterRandomStateAndLevelCount) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  NumbersInspector::setRandomState(list, 0x00800000U);
  list.insert(number(1));
  ASSERT_EQ(list.levelCount(), 9);
  const quint32 state = NumbersInspector::randomState(list);
  list.clear();
  EXPECT_EQ(list.levelCount(), 9);
  EXPECT_EQ(list.levelParameter(), 2);
  EXPECT_EQ(NumbersInspector::randomState(list), state);
  EXPECT_EQ(NumbersInspector::dump(list),
            "L0:\nL1:\nL2:\nL3:\nL4:\nL5:\nL6:\nL7:\nL8:\nfinger: - - - - - - - - -\n");
  list.insert(number(2));
  EXPECT_THAT(values(list), ElementsAre(2));
}

TEST_F(SkipListOfNumbers, DestroyingReleasesEveryNode) {
  HeapProbe probe;
  std::size_t before = 0;
  {
    Numbers list(&comparator_, false, kArgumentOfThree);
    std::array<double, 50> elements{};
    for (std::size_t at = 0; at < elements.size(); ++at) {
      elements[at] = static_cast<double>(at);
      list.insert(&elements[at]);
    }
    before = probe.requests();
  }
  EXPECT_EQ(probe.releases(), before);
}

TEST_F(SkipListOfNumbers, GrowsToTheLevelOfTheNode) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 1; value <= 4; ++value) {
    list.append(number(value));
  }
  NumbersInspector::setRandomState(list, 0x08000000U);  // four zeros
  list.insert(number(0));
  EXPECT_EQ(NumbersInspector::dump(list),
            "L0: 0 1 2 3 4\n"
            "L1: 0 2 4\n"
            "L2: 0 4\n"
            "L3: 0\n"
            "L4: 0\n"
            "finger: 4 4 4 - -\n");
}

TEST_F(SkipListOfNumbers, GrowthReplacesHeadAndFingerByNodesOfTheNewLevelCount) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  NumbersInspector::setRandomState(list, 0x00800000U);
  double *one = number(1);
  HeapProbe probe;
  list.insert(one);
  EXPECT_EQ(probe.requestsOf(8U + 8U * 9U), 3U);  // head, finger and the node itself
  EXPECT_EQ(probe.releases(), 2U);
}

TEST_F(SkipListOfNumbers, TheLastFoundNodeFollowsTheHead) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  list.insert(number(5));
  NumbersInspector::setRandomState(list, kHighestDraw);
  list.insert(number(1));
  EXPECT_TRUE(NumbersInspector::lastFoundIsHead(list));
  NumbersInspector::setRandomState(list, kHighestDraw);
  list.insert(number(9));
  EXPECT_EQ(*NumbersInspector::lastFound(list), 5);
}

TEST_F(SkipListOfNumbers, GrowthKeepsALastFoundNodeThatIsNotTheHead) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  list.insert(number(5));
  NumbersInspector::setRandomState(list, kHighestDraw);
  list.insert(number(9));
  EXPECT_EQ(*NumbersInspector::lastFound(list), 5);
}

TEST_F(SkipListOfNumbers, TheLevelCountNeverExceeds32HoweverManyElementsAreInserted) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  for (int value = 0; value < 200; ++value) {
    NumbersInspector::setRandomState(list, kHighestDraw);
    double *element = number(value * 7 % 200);
    list.insert(element);
    ASSERT_EQ(list.levelCount(), 32);
    ASSERT_EQ(NumbersInspector::levelOf(list, element), 32);
  }
  EXPECT_EQ(NumbersInspector::complaint(list), "");
  for (int value = 0; value < 200; ++value) {
    ASSERT_EQ(*list.remove(value), value);
  }
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(list.levelCount(), 32);
}

TEST_F(SkipListOfNumbers, ManyElementsInAnyOrderStayInOrderWithinTheLevelBound) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  constexpr int kCount = 50021;  // prime
  for (int at = 0; at < kCount; ++at) {
    list.insert(number(static_cast<double>((at * 7919LL) % kCount)));
  }
  EXPECT_EQ(list.count(), kCount);
  EXPECT_LE(list.levelCount(), 32);
  const std::vector<double> all = values(list);
  ASSERT_EQ(all.size(), static_cast<std::size_t>(kCount));
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
}

TEST_F(SkipListOfNumbers, HighNodesAreReleasedTheWayTheyCame) {
  for (const bool pooling : {false, true}) {
    const ScopedPooling switches(pooling);
    Numbers list(&comparator_, false, kArgumentOfTwo);
    list.insert(number(1));
    NumbersInspector::setRandomState(list, kHighestDraw);
    list.insert(number(2));
    EXPECT_EQ(*list.remove(2), 2);
    EXPECT_EQ(*list.remove(1), 1);
  }
}

// Records what is compared during a search and the scratch words meanwhile.
class WatchingComp : public Comparison<double> {
 public:
  int compare(const double &a, const double &b) const override {
    compared.push_back(&a);
    scratch.insert(
        {this->Comparison::scratch(0), this->Comparison::scratch(1), this->Comparison::scratch(2)});
    return compareKeys(a, b);
  }
  mutable std::vector<const double *> compared;
  mutable std::set<std::array<qint32, 3>> scratch;
};

TEST_F(SkipListOfNumbers, ASearchNeverComparesTheSameNodeTwice) {
  for (const int argument : {2, 3, 0, 5, 8}) {
    WatchingComp watching;
    Numbers list(&watching, false, argument);
    for (int value = 0; value < 500; ++value) {
      list.insert(number(2 * ((value * 7) % 500)));
    }
    for (int key = -1; key <= 1001; ++key) {
      watching.compared.clear();
      double *element = nullptr;
      list.search(key, element);
      const std::set<const double *> distinct(watching.compared.begin(), watching.compared.end());
      ASSERT_EQ(distinct.size(), watching.compared.size()) << key;
    }
  }
}

TEST_F(SkipListOfNumbers, ASearchComparesFewNodes) {
  WatchingComp watching;
  Numbers list(&watching, false, kArgumentOfTwo);
  for (int value = 0; value < 20000; ++value) {
    list.insert(number(value));
  }
  watching.compared.clear();
  double *element = nullptr;
  for (int key = 0; key < 20000; key += 20) {
    list.search(key, element);
  }
  EXPECT_LT(watching.compared.size() / 1000, 60U);
}

TEST_F(SkipListOfNumbers, TheScratchWordsAre100DuringASearchAndZeroAfter) {
  WatchingComp watching;
  Numbers list(&watching, false, kArgumentOfThree);
  list.insert(number(1));
  watching.scratch.clear();
  double *element = nullptr;
  list.search(1, element);
  EXPECT_THAT(watching.scratch, ElementsAre(std::array<qint32, 3>{1, 0, 0}));
  EXPECT_EQ(watching.Comparison::scratch(0), 0);
  EXPECT_EQ(watching.Comparison::scratch(1), 0);
  EXPECT_EQ(watching.Comparison::scratch(2), 0);
}

// The operations that a derived list may replace.
class RecordingList : public Numbers {
 public:
  using Numbers::Numbers;
  ~RecordingList() override { clear(); }
  SkipNode *allocateNode(double *element, int level) override {
    calls.push_back("allocate " + std::to_string(level));
    return Numbers::allocateNode(element, level);
  }
  void releaseNode(SkipNode *node, int level, bool deleteItsElement) override {
    calls.push_back("release " + std::to_string(level));
    Numbers::releaseNode(node, level, deleteItsElement);
  }
  void deleteElement(double *element) override { calls.push_back("delete " + general(*element)); }
  std::vector<std::string> calls;
};

TEST_F(SkipListOfNumbers, NodesAreAllocatedAndReleasedThroughTheVirtualOperations) {
  RecordingList list(&comparator_, false, kArgumentOfTwo);
  list.append(number(1));
  list.append(number(2));
  list.remove(1);
  list.clear();
  EXPECT_THAT(list.calls, ElementsAre("allocate 1", "allocate 2", "release 1", "release 2"));
}

TEST_F(SkipListOfNumbers, AnElementIsDeletedOnlyWhereTheCallerAsks) {
  RecordingList list(&comparator_, false, kArgumentOfTwo);
  SkipNode *node = list.allocateNode(number(4), 2);
  list.releaseNode(node, 2, true);
  EXPECT_THAT(list.calls, ElementsAre("allocate 2", "release 2", "delete 4"));
}

TEST_F(SkipListOfNumbers, TheElementOfANodeCanBeReadTwoWaysAndSet) {
  Numbers list(&comparator_, false, kArgumentOfTwo);
  double *one = number(1);
  double *another = number(1);
  list.insert(one);
  SkipNode *node = NumbersInspector::firstNode(list);
  EXPECT_EQ(list.elementOf(node), one);
  EXPECT_EQ(list.elementAt(node), one);
  list.setElement(node, another);
  EXPECT_EQ(list.elementOf(node), another);
  EXPECT_EQ(list.elementAt(node), another);
}

TEST(SkipList, TheDefaultDeletionOfAnElementDeletesIt) {
  DoubleComp comparator;
  Numbers list(&comparator, false, kArgumentOfTwo);
  auto *element = new double(3);
  list.insert(element);
  list.clear();
  const HeapProbe probe;
  list.deleteElement(element);
  EXPECT_EQ(probe.releases(), 1U);
}

TEST_F(SkipListOfNumbers, WithoutMemoryForTheFingerThereIsNoList) {
  HeapProbe probe;
  probe.failRequest(2);
  EXPECT_THROW(Numbers(&comparator_, false, kArgumentOfThree), std::bad_alloc);
}

TEST_F(SkipListOfNumbers, AnInsertWithoutMemoryChangesNothing) {
  // The head, the finger and the node of level 9, one after the other.
  for (int failing = 1; failing <= 3; ++failing) {
    Numbers list(&comparator_, false, kArgumentOfTwo);
    list.insert(number(1));
    NumbersInspector::setRandomState(list, 0x00800000U);
    double *two = number(2);
    {
      HeapProbe probe;
      probe.failRequest(failing);
      EXPECT_THROW(list.insert(two), std::bad_alloc);
    }
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(NumbersInspector::complaint(list), "");
    EXPECT_EQ(list.insert(two), 0);
    EXPECT_THAT(values(list), ElementsAre(1, 2));
  }
}

}  // namespace
}  // namespace corvane
