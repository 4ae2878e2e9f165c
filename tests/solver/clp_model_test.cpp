#include "solver/clp_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ClpSimplex.hpp>

#include <cmath>

namespace corvane::lp {
namespace {

using ::testing::ElementsAre;

TEST(ScaleFor, LeavesOrdinarySizesAlone) {
  for (const double size : {0.0, 1.0, 250.0, 0x1p-11, 0x1p19}) {
    EXPECT_EQ(scaleFor(size), 1.0) << size;
  }
}

TEST(ScaleFor, BringsOthersToTheNearerEndByAPowerOfTwo) {
  EXPECT_EQ(scaleFor(0x1p20), 0.5);
  EXPECT_EQ(scaleFor(0x1p40), 0x1p-21);
  EXPECT_EQ(scaleFor(0x1p-12), 2.0);
  EXPECT_TRUE(std::isfinite(scaleFor(5e-324)));
}

TEST(ClpBound, ScalesWhatIsFinite) {
  EXPECT_EQ(clpBound(3.0, 0.5), 1.5);
  EXPECT_EQ(clpBound(kInfinity, 0.5), COIN_DBL_MAX);
  EXPECT_EQ(clpBound(-kInfinity, 0.5), -COIN_DBL_MAX);
}

TEST(PossiblePrice, HasTheSignThatItsRowAllows) {
  EXPECT_EQ(possiblePrice(-1e-12, 4.0, kInfinity), 0.0);
  EXPECT_EQ(possiblePrice(2.0, 4.0, kInfinity), 2.0);
  EXPECT_EQ(possiblePrice(1e-12, -kInfinity, 4.0), 0.0);
  EXPECT_EQ(possiblePrice(-2.0, -kInfinity, 4.0), -2.0);
  EXPECT_EQ(possiblePrice(-2.0, 4.0, 4.0), -2.0);
}

TEST(PossiblePrice, IsNeverANegativeZero) {
  EXPECT_FALSE(std::signbit(possiblePrice(-0.0, 4.0, kInfinity)));
  EXPECT_FALSE(std::signbit(possiblePrice(-0.0, -kInfinity, 4.0)));
  EXPECT_FALSE(std::signbit(possiblePrice(-1e-12, 4.0, kInfinity)));
}

TEST(ColumnArrays, RenameRowsAndLeaveOthersOut) {
  ColumnPool pool;
  pool.cost = {2, 3};
  pool.lower = {0, 0};
  pool.upper = {kInfinity, 8};
  pool.start = {0, 2, 4};
  pool.row = {0, 1, 1, 2};
  pool.value = {5, 6, 7, 8};
  const ColumnArrays arrays(pool, std::vector<int>{1, 0}, std::vector<int>{-1, 0, 1}, 2.0, 0.25);
  EXPECT_THAT(arrays.cost, ElementsAre(6, 4));
  EXPECT_THAT(arrays.upper, ElementsAre(2, COIN_DBL_MAX));
  EXPECT_THAT(arrays.start, ElementsAre(0, 2, 3));
  EXPECT_THAT(arrays.row, ElementsAre(0, 1, 0));
  EXPECT_THAT(arrays.value, ElementsAre(7, 8, 6));
}

TEST(StatusOf, KnowsClpsNumbers) {
  ClpSimplex clp;
  const auto of = [&](int problem) {
    clp.setProblemStatus(problem);
    return statusOf(clp);
  };
  EXPECT_EQ(of(0), Status::kOptimal);
  EXPECT_EQ(of(1), Status::kInfeasible);
  EXPECT_EQ(of(2), Status::kUnbounded);
  EXPECT_EQ(of(3), Status::kOther);
}

}  // namespace
}  // namespace corvane::lp
