#include "generation/pending_columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generation/link_hooks.h"
#include "support/array_contents.h"
#include "support/fatal_end.h"

namespace corvane {
namespace {

using support::contents;
using support::expectRunEnds;
using support::RefusedArray;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

class PendingColumnsOfThreeRows : public testing::Test {
 protected:
  void append(double cost, const QLinkedList<double> &widths) {
    pending_.append(cost, widths, rowWidths_);
  }

  // The words when the n-th array of `step` cannot be had.
  void expectRefusal(int n, const std::function<void(PendingColumns &)> &step,
                     const std::string &words) {
    const auto run = [&](std::ostream &log) {
      PendingColumns pending(log);
      const RefusedArray refused(n);
      step(pending);
    };
    expectRunEnds(run, words);
  }

  std::ostringstream log_;
  PendingColumns pending_{log_};
  std::vector<double> rowWidths_{45, 30, 12};
};

TEST_F(PendingColumnsOfThreeRows, AreEmptyWhenPrepared) {
  pending_.prepare();
  append(100, {45});
  pending_.prepare();
  EXPECT_EQ(pending_.columns().columns(), 0);
  EXPECT_THAT(contents(pending_.columns().starts), SizeIs(0));
  EXPECT_THAT(contents(pending_.columns().values), SizeIs(0));
}

TEST_F(PendingColumnsOfThreeRows, HoldCostStartRowsMultiplicitiesAndBoundsOfEachPattern) {
  pending_.prepare();
  append(100, {30, 30, 12});
  append(120.5, {45});
  append(100, {45, 12, 12, 12});
  const LpArrays &columns = pending_.columns();
  EXPECT_EQ(columns.columns(), 3);
  EXPECT_THAT(contents(columns.objective), ElementsAre(100, 120.5, 100));
  EXPECT_THAT(contents(columns.starts), ElementsAre(0, 2, 3));
  EXPECT_THAT(contents(columns.indices), ElementsAre(1, 2, 0, 0, 2));
  EXPECT_THAT(contents(columns.values), ElementsAre(2, 1, 1, 1, 3));
  EXPECT_THAT(contents(columns.lower), ElementsAre(0, 0, 0));
  EXPECT_THAT(contents(columns.upper), ElementsAre(1e20, 1e20, 1e20));
}

TEST_F(PendingColumnsOfThreeRows, OfAPatternWithoutWidthsHaveNoNonzeros) {
  pending_.prepare();
  append(-1, {});
  append(100, {12});
  EXPECT_THAT(contents(pending_.columns().starts), ElementsAre(0, 0));
  EXPECT_THAT(contents(pending_.columns().indices), ElementsAre(2));
}

TEST_F(PendingColumnsOfThreeRows, GrowBeyondTheirFirstMemory) {
  pending_.prepare();
  for (int column = 0; column < 2000; ++column) {
    append(column, {45, 30, 12});
  }
  const LpArrays &columns = pending_.columns();
  EXPECT_EQ(columns.columns(), 2000);
  EXPECT_EQ(columns.objective[1999], 1999);
  EXPECT_EQ(columns.starts[1999], 5997);
  EXPECT_THAT(contents(columns.values), SizeIs(6000));
  EXPECT_THAT(contents(columns.values), Each(1.0));
  EXPECT_THAT(contents(columns.upper), SizeIs(2000));
}

TEST_F(PendingColumnsOfThreeRows, EndTheRunWithoutTheirFirstMemory) {
  const auto prepare = [](PendingColumns &pending) { pending.prepare(); };
  expectRefusal(1, prepare,
                "Error: Could not allocate memory for additional objective function coefficients.");
  for (int part = 2; part <= 4; ++part) {
    expectRefusal(part, prepare,
                  "Error: Could not allocate memory for additions to the constraint matrix.");
  }
  expectRefusal(5, prepare, "Error: Could not allocate memory for additions to the lower bounds.");
  expectRefusal(6, prepare, "Error: Could not allocate memory for additions to the upper bounds.");
}

// Without prepare() every array takes its first memory with the first column.
TEST_F(PendingColumnsOfThreeRows, EndTheRunWithoutMemoryForOneMoreColumn) {
  const auto appendOne = [this](PendingColumns &pending) {
    pending.append(100, {45, 30}, rowWidths_);
  };
  expectRefusal(1, appendOne,
                "Error: Could not allocate memory for additional objective function coefficients.");
  for (int part = 2; part <= 4; ++part) {
    expectRefusal(part, appendOne,
                  "Error: Could not allocate memory for additions to the constraint matrix.");
  }
  expectRefusal(5, appendOne,
                "Error: Could not allocate memory for additions to the lower bounds.");
  expectRefusal(6, appendOne,
                "Error: Could not allocate memory for additions to the upper bounds.");
}

}  // namespace
}  // namespace corvane
