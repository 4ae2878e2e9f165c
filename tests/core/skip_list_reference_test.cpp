// The skip list beside a sorted vector: every short sequence of operations, and long random ones.

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <span>
#include <sstream>

#include "core/skip_list.h"
#include "core/skip_list_cursor.h"
#include "support/scoped_pooling.h"
#include "support/skip_list_dump.h"
#include "support/sorted_vector_list.h"

namespace corvane {
namespace {

struct Item {
  int key;
};

class ItemComp : public Comparison<Item> {
 public:
  int compare(const Item &a, const Item &b) const override { return compareKeys(a.key, b.key); }
};

using List = skipList<Item>;
using ItemInspector = SkipListInspector<Item>;

enum class Kind { kInsert, kAppend, kRemove, kSearch, kRewind, kStep, kClear };

struct Operation {
  Kind kind;
  int key;
};

std::string nameOf(const Operation &operation) {
  static const char *const kNames[] = {"insert", "append", "remove", "search",
                                       "rewind", "step",   "clear"};
  return std::string(kNames[static_cast<int>(operation.kind)]) + " " +
         std::to_string(operation.key);
}

struct Condition {
  int levelArgument;
  bool duplicates;
  bool pooling;
  quint32 randomState;
};

std::string nameOf(const Condition &condition) {
  std::ostringstream out;
  out << "argument " << condition.levelArgument << (condition.duplicates ? ", duplicates" : "")
      << (condition.pooling ? ", pooled" : "") << ", state " << condition.randomState;
  return out.str();
}

// A list and its reference, driven together. Every step answers what differs, or nothing.
class ListAndReference {
 public:
  explicit ListAndReference(const Condition &condition)
      : list_(&comparator_, condition.duplicates, condition.levelArgument),
        reference_(comparator_, condition.duplicates) {
    ItemInspector::setRandomState(list_, condition.randomState);
  }

  std::string apply(const Operation &operation) {
    switch (operation.kind) {
      case Kind::kInsert:
      case Kind::kAppend:
        return add(operation);
      case Kind::kRemove:
        return list_.remove({operation.key}) == reference_.remove({operation.key}) ? "" : "removed";
      case Kind::kSearch:
        return search({operation.key});
      case Kind::kRewind:
        list_.rewind();
        reference_.rewind();
        return "";
      case Kind::kStep:
        return list_.step() == reference_.step() ? "" : "stepped to";
      case Kind::kClear:
        return list_.clear() == reference_.clear() ? "" : "number of nodes released";
    }
    return "unknown operation";
  }

  // Whether both hold the same, in the same order, by every way of looking.
  std::string compare() const {
    if (const std::string complaint = ItemInspector::complaint(list_); !complaint.empty()) {
      return complaint;
    }
    if (ItemInspector::level(list_, 0) != reference_.items()) {
      return "elements";
    }
    if (ItemInspector::finger(list_, 0) != reference_.position()) {
      return "position";
    }
    std::vector<Item *> walked;
    SkipListCursor<Item> cursor(list_);
    while (Item *item = cursor.next()) {
      walked.push_back(item);
    }
    return walked == reference_.items() ? "" : "elements that the cursor hands over";
  }

  const List &list() const { return list_; }

 private:
  std::string add(const Operation &operation) {
    items_.push_back({operation.key});
    Item *item = &items_.back();
    Item *existing = nullptr;
    Item *expected = nullptr;
    const bool inOrder = operation.kind == Kind::kAppend;
    const int answer = inOrder ? list_.append(item, &existing) : list_.insert(item, &existing);
    const int right =
        inOrder ? reference_.append(item, &expected) : reference_.insert(item, &expected);
    return answer == right && existing == expected ? "" : "answer to an addition";
  }

  std::string search(const Item &key) const {
    Item *found = nullptr;
    Item *expected = nullptr;
    const int answer = list_.search(key, found);
    if (answer != reference_.search(key, expected)) {
      return "answer to a search";
    }
    const bool same = answer == 0 ? found->key == expected->key : found == expected;
    return same ? "" : "element of a search";
  }

  ItemComp comparator_;
  std::deque<Item> items_;
  List list_;
  support::SortedVectorList<Item> reference_;
};

std::string namesOf(std::span<const Operation> operations) {
  std::string names;
  for (const Operation &operation : operations) {
    names += nameOf(operation) + "; ";
  }
  return names;
}

// Runs the operations, comparing all that the two hold after the last and every so many before it;
// the first difference with the operations so far, or nothing.
std::string firstDifference(const Condition &condition, const std::vector<Operation> &operations,
                            std::size_t comparedEvery = 1) {
  const support::ScopedPooling pooling(condition.pooling);
  ListAndReference pair(condition);
  for (std::size_t at = 0; at < operations.size(); ++at) {
    std::string difference = pair.apply(operations[at]);
    if (difference.empty() && (operations.size() - 1 - at) % comparedEvery == 0) {
      difference = pair.compare();
    }
    if (!difference.empty()) {
      return nameOf(condition) + ": " + namesOf(std::span(operations).first(at + 1)) + "=> " +
             difference;
    }
  }
  return "";
}

std::vector<Operation> alphabet() {
  return {{Kind::kInsert, 1}, {Kind::kInsert, 2}, {Kind::kInsert, 3}, {Kind::kAppend, 2},
          {Kind::kAppend, 4}, {Kind::kRemove, 1}, {Kind::kRemove, 2}, {Kind::kRemove, 4},
          {Kind::kSearch, 2}, {Kind::kRewind, 0}, {Kind::kStep, 0},   {Kind::kClear, 0}};
}

// Every sequence of this length over the letters, compared at its end.
std::string firstDifferenceOfLength(const Condition &condition,
                                    const std::vector<Operation> &letters, std::size_t length) {
  std::vector<std::size_t> digits(length, 0);
  std::vector<Operation> operations(length, letters[0]);
  for (std::size_t at = 0; at < length;) {
    const std::string difference = firstDifference(condition, operations, length);
    if (!difference.empty()) {
      return difference;
    }
    for (at = 0; at < length; ++at) {
      digits[at] = (digits[at] + 1) % letters.size();
      operations[at] = letters[digits[at]];
      if (digits[at] != 0) {
        break;
      }
    }
  }
  return "";
}

std::string firstDifferenceUpToLength(const Condition &condition, std::size_t most) {
  std::string difference;
  for (std::size_t length = 1; length <= most && difference.empty(); ++length) {
    difference = firstDifferenceOfLength(condition, alphabet(), length);
  }
  return difference;
}

class EveryCondition : public testing::TestWithParam<std::tuple<bool, bool>> {
 protected:
  Condition condition(int levelArgument, quint32 randomState) const {
    return {levelArgument, std::get<0>(GetParam()), std::get<1>(GetParam()), randomState};
  }
};

TEST_P(EveryCondition, EveryShortSequenceAgreesWithTheSortedVector) {
  EXPECT_EQ(firstDifferenceUpToLength(condition(3, 0x1E9EB544U), 4), "");
  // High and low levels in turn, so that nodes of several levels are removed.
  EXPECT_EQ(firstDifferenceUpToLength(condition(2, 0x12345678U), 4), "");
}

// Where a node's memory comes from is the pools' affair, so one way of it does for the longest;
// what is left out does as its like does, and stands in the sequences of four.
TEST(EverySequenceOfFive, AgreesWithTheSortedVector) {
  const std::vector<Operation> letters = {
      {Kind::kInsert, 1}, {Kind::kInsert, 2}, {Kind::kAppend, 4}, {Kind::kRemove, 1},
      {Kind::kRemove, 2}, {Kind::kRewind, 0}, {Kind::kStep, 0}};
  for (const bool duplicates : {false, true}) {
    EXPECT_EQ(firstDifferenceOfLength({3, duplicates, true, 0x1E9EB544U}, letters, 5), "");
  }
}

TEST_P(EveryCondition, EverySequenceOfThreeOnAFilledListAgrees) {
  const std::vector<Operation> filled = {{Kind::kAppend, 1}, {Kind::kAppend, 2}, {Kind::kAppend, 3},
                                         {Kind::kAppend, 4}, {Kind::kRewind, 0}, {Kind::kStep, 0}};
  const std::vector<Operation> letters = alphabet();
  for (const Operation &a : letters) {
    for (const Operation &b : letters) {
      for (const Operation &c : letters) {
        std::vector<Operation> operations = filled;
        operations.insert(operations.end(), {a, b, c});
        ASSERT_EQ(firstDifference(condition(2, 0x1E9EB544U), operations), "");
      }
    }
  }
}

Operation randomOperation(std::mt19937 &random, int keys) {
  const auto roll = random() % 100;
  const int key = static_cast<int>(random() % static_cast<unsigned>(keys));
  if (roll < 35) {
    return {Kind::kInsert, key};
  }
  if (roll < 45) {
    return {Kind::kAppend, keys - key / 8};
  }
  if (roll < 70) {
    return {Kind::kRemove, key};
  }
  if (roll < 85) {
    return {Kind::kSearch, key};
  }
  if (roll < 98) {
    return {Kind::kStep, 0};
  }
  return random() % 40 != 0 ? Operation{Kind::kRewind, 0} : Operation{Kind::kClear, 0};
}

TEST_P(EveryCondition, LongRandomSequencesAgreeWithTheSortedVector) {
  for (quint32 seed = 1; seed <= 10; ++seed) {
    std::mt19937 random(seed);
    const int argument = static_cast<int>(random() % 10);
    std::vector<Operation> operations;
    for (int step = 0; step < 1000; ++step) {
      operations.push_back(randomOperation(random, 10 + static_cast<int>(seed) * 8));
    }
    // Each answer is compared; all that the two hold, now and then: a difference stays.
    ASSERT_EQ(firstDifference(condition(argument, seed * 2654435761U), operations, 9), "") << seed;
  }
}

TEST_P(EveryCondition, RandomSequencesAgreeWhileTheListGrowsTo32Levels) {
  // Now and then the state is set to a single bit, whose zeros give any level up to 32.
  const support::ScopedPooling pooling(std::get<1>(GetParam()));
  std::mt19937 random(99);
  for (int round = 0; round < 10; ++round) {
    ListAndReference pair(condition(2, 1));
    for (int step = 0; step < 300; ++step) {
      if (random() % 4 == 0) {
        ItemInspector::setRandomState(const_cast<List &>(pair.list()), 1U << (random() % 32));
      }
      ASSERT_EQ(pair.apply(randomOperation(random, 40)), "") << round << ", " << step;
      if (step % 5 == 4) {
        ASSERT_EQ(pair.compare(), "") << round << ", " << step;
      }
    }
    EXPECT_EQ(pair.list().levelCount(), 32);
  }
}

INSTANTIATE_TEST_SUITE_P(DuplicatesAndPooling, EveryCondition,
                         testing::Combine(testing::Bool(), testing::Bool()));

}  // namespace
}  // namespace corvane
