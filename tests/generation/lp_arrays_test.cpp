#include "generation/lp_arrays.h"

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
using testing::SizeIs;

class LpArraysOfTwoRows : public testing::Test {
 protected:
  void allocate(std::ostream &log) {
    lp_.allocateObjective(3, 80.5, log);
    lp_.allocateSenses(2, log);
    lp_.allocateMatrix(3, 5, log);
    lp_.allocateBounds(3, log);
    lp_.allocateRightHandSides(2, log);
  }

  // The words when the n-th array cannot be had.
  void expectRefusal(int n, const std::string &words) {
    const auto step = [this, n](std::ostream &log) {
      const RefusedArray refused(n);
      allocate(log);
    };
    expectRunEnds(step, words);
  }

  LpArrays lp_;
};

TEST_F(LpArraysOfTwoRows, StartWithTheirValues) {
  std::ostringstream log;
  allocate(log);
  EXPECT_EQ(lp_.columns(), 3);
  EXPECT_EQ(lp_.rows(), 2);
  EXPECT_THAT(contents(lp_.objective), Each(80.5));
  EXPECT_THAT(contents(lp_.senses), Each('G'));
  EXPECT_THAT(contents(lp_.starts), SizeIs(3));
  EXPECT_THAT(contents(lp_.counts), SizeIs(3));
  EXPECT_THAT(contents(lp_.indices), SizeIs(5));
  EXPECT_THAT(contents(lp_.values), SizeIs(5));
  EXPECT_THAT(contents(lp_.lower), Each(0.0));
  EXPECT_THAT(contents(lp_.upper), Each(1e20));
  EXPECT_THAT(contents(lp_.rightHandSides), Each(0.0));
  EXPECT_EQ(log.str(), "");
}

TEST_F(LpArraysOfTwoRows, EndTheRunWithoutMemoryForTheObjective) {
  expectRefusal(1, "Error: Could not allocate memory for objective function coefficients.");
}

TEST_F(LpArraysOfTwoRows, EndTheRunWithoutMemoryForTheSenses) {
  expectRefusal(2, "Error: Could not allocate memory for senses.");
}

TEST_F(LpArraysOfTwoRows, EndTheRunWithoutMemoryForAnyPartOfTheMatrix) {
  for (int part = 3; part <= 6; ++part) {
    expectRefusal(part, "Error: Could not allocate memory for constraint matrix.");
  }
}

TEST_F(LpArraysOfTwoRows, EndTheRunWithoutMemoryForTheBounds) {
  expectRefusal(7, "Error: Could not allocate memory for lower bounds.");
  expectRefusal(8, "Error: Could not allocate memory for upper bounds.");
}

TEST_F(LpArraysOfTwoRows, EndTheRunWithoutMemoryForTheRightHandSides) {
  expectRefusal(9, "Error: Could not allocate memory for right hand side.");
}

}  // namespace
}  // namespace corvane
