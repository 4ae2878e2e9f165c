#include "solver/linear_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "solver/test_lp.h"

namespace corvane::lp::testing {
namespace {

using ::testing::ElementsAre;

constexpr int kMostInt = std::numeric_limits<int>::max();

// Two columns of three rows, 2 and 1 entries, with a gap in the arrays between them.
struct Arrays {
  std::vector<double> costs = {3, 4};
  std::vector<int> starts = {0, 3};
  std::vector<int> counts = {2, 1};
  std::vector<int> rows = {0, 2, 9, 1};
  std::vector<double> values = {1, 2, kNan, 5};
  std::vector<double> lower = {0, 0};
  std::vector<double> upper = {1e20, 1e20};

  ColumnBatch batch() const {
    ColumnBatch batch;
    batch.columns = 2;
    batch.nonzeros = 4;
    batch.costs = costs.data();
    batch.starts = starts.data();
    batch.counts = counts.data();
    batch.rows = rows.data();
    batch.values = values.data();
    batch.lower = lower.data();
    batch.upper = upper.data();
    return batch;
  }
};

LinearProgram withRows(const std::vector<double> &rhs, const std::string &senses, int sense = 1) {
  LinearProgram program;
  EXPECT_TRUE(program.setRows({static_cast<int>(rhs.size()), rhs.data(), senses.data()}, sense));
  return program;
}

LinearProgram withThreeRows() {
  return withRows({1, 2, 3}, "GGG");
}

TEST(Rows, AreBoundedAsTheirSenseSays) {
  const LinearProgram program = withRows({4, 5, 6, 1e20, -2e20}, "GLEGL");
  EXPECT_EQ(program.rows(), 5);
  EXPECT_THAT(program.rowLower(), ElementsAre(4, -kInfinity, 6, kInfinity, -kInfinity));
  EXPECT_THAT(program.rowUpper(), ElementsAre(kInfinity, 5, 6, kInfinity, -kInfinity));
}

TEST(Rows, JustBelow1e20AreFinite) {
  const double most = std::nextafter(1e20, 0.0);
  EXPECT_THAT(withRows({most, -most}, "GL").rowLower(), ElementsAre(most, -kInfinity));
  EXPECT_THAT(withRows({most, -most}, "GL").rowUpper(), ElementsAre(kInfinity, -most));
}

TEST(Rows, ThatAreRefusedChangeNothing) {
  LinearProgram program = withThreeRows();
  const Arrays arrays;
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  const std::vector<double> rhs = {7, kNan};
  const auto refuses = [&](const RowBatch &batch, int sense = 1) {
    const bool refused = !program.setRows(batch, sense);
    return refused && program.rows() == 3 && program.columns() == 2 &&
           program.rowLower() == std::vector<double>({1, 2, 3}) && program.objectiveSense() == 1;
  };
  EXPECT_TRUE(refuses({-1, rhs.data(), "GG"}));
  EXPECT_TRUE(refuses({1, rhs.data(), "G"}, 0));
  EXPECT_TRUE(refuses({1, rhs.data(), "G"}, 2));
  EXPECT_TRUE(refuses({1, nullptr, "G"}));
  EXPECT_TRUE(refuses({1, rhs.data(), nullptr}));
  EXPECT_TRUE(refuses({2, rhs.data(), "GG"})) << "the second is no number";
  EXPECT_TRUE(refuses({1, rhs.data(), "R"}));
}

TEST(Rows, MayBeNone) {
  LinearProgram program;
  EXPECT_TRUE(program.setRows({0, nullptr, nullptr}, 1));
  EXPECT_EQ(program.rows(), 0);
}

TEST(Rows, SetAgainForgetWhatWasThere) {
  LinearProgram program = withRows({9}, "G");
  Arrays arrays;
  arrays.rows = {0, 0, 9, 0};
  arrays.counts = {1, 1};
  arrays.costs = {-3, 4};
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_FALSE(program.isCovering());
  EXPECT_EQ(program.largestCost(), 4.0);
  const double rhs = 2;
  ASSERT_TRUE(program.setRows({1, &rhs, "G"}, -1));
  EXPECT_EQ(program.columns(), 0);
  EXPECT_EQ(program.pool(), ColumnPool());
  EXPECT_TRUE(program.isCovering());
  EXPECT_EQ(program.largestCost(), 0.0);
  EXPECT_EQ(program.largestDemand(), 2.0);
  EXPECT_EQ(program.objectiveSense(), -1);
}

TEST(LargestDemand, IsThatOfTheRowsThatDemand) {
  EXPECT_EQ(withRows({3, 8, 700, -900, 1e20}, "GELGG").largestDemand(), 8.0);
}

TEST(LargestDemand, IsTheLargestBoundWhereNothingIsDemanded) {
  LinearProgram program = withRows({0, -5, 1e20}, "GGL");
  EXPECT_EQ(program.largestDemand(), 5.0);
  Arrays arrays;
  arrays.lower = {-30, -1e20};
  arrays.upper = {20, 40};
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_EQ(program.largestDemand(), 40.0);
  arrays.lower = {-50, 0};
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_EQ(program.largestDemand(), 50.0);
}

TEST(Columns, GoIntoThePoolOneAfterTheOther) {
  LinearProgram program = withThreeRows();
  const Arrays arrays;
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_EQ(program.columns(), 4);
  const ColumnPool &pool = program.pool();
  EXPECT_THAT(pool.cost, ElementsAre(3, 4, 3, 4));
  EXPECT_THAT(pool.start, ElementsAre(0, 2, 3, 5, 6));
  EXPECT_THAT(pool.row, ElementsAre(0, 2, 1, 0, 2, 1));
  EXPECT_THAT(pool.value, ElementsAre(1, 2, 5, 1, 2, 5));
  EXPECT_THAT(pool.lower, ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(pool.upper, ::testing::Each(kInfinity));
  EXPECT_EQ(program.largestCost(), 4.0);
}

TEST(Columns, WithoutCountsEndWhereTheNextBegins) {
  LinearProgram program = withThreeRows();
  Arrays arrays;
  arrays.starts = {0, 1};
  arrays.rows = {0, 0, 1, 2};
  arrays.values = {1, 2, 3, 4};
  ColumnBatch batch = arrays.batch();
  batch.counts = nullptr;
  batch.nonzeros = 3;
  ASSERT_TRUE(program.addColumns(batch));
  EXPECT_THAT(program.pool().start, ElementsAre(0, 1, 3));
  EXPECT_THAT(program.pool().value, ElementsAre(1, 2, 3));
}

TEST(Columns, MayBeNoneOrWithoutEntries) {
  LinearProgram program = withThreeRows();
  EXPECT_TRUE(program.addColumns({}));
  EXPECT_EQ(program.columns(), 0);
  Arrays arrays;
  arrays.counts = {0, 0};
  ColumnBatch batch = arrays.batch();
  batch.rows = nullptr;
  batch.values = nullptr;
  EXPECT_TRUE(program.addColumns(batch));
  EXPECT_THAT(program.pool().start, ElementsAre(0, 0, 0));
}

TEST(Columns, OfAMaximisationHaveTheirCostsTurned) {
  LinearProgram program = withRows({1, 2, 3}, "LLL", -1);
  Arrays arrays;
  arrays.costs = {3, 0};
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_THAT(program.pool().cost, ElementsAre(-3, 0));
  EXPECT_FALSE(std::signbit(program.pool().cost[1]));
  EXPECT_EQ(program.largestCost(), 3.0);
}

TEST(Columns, LoseWhatIsAsGoodAsZero) {
  LinearProgram program = withThreeRows();
  Arrays arrays;
  arrays.values = {1e-21, -1e-21, kNan, 1e-20};
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_THAT(program.pool().start, ElementsAre(0, 0, 1));
  EXPECT_THAT(program.pool().row, ElementsAre(1));
  EXPECT_TRUE(program.isCovering()) << "the negative one is none";
}

TEST(Columns, MayHoldNumbersJustBelow1e20) {
  const double most = std::nextafter(1e20, 0.0);
  LinearProgram program = withThreeRows();
  Arrays arrays;
  arrays.costs = {most, -most};
  arrays.values = {most, -most, 0, 1};
  arrays.lower = {most, -1e20};
  arrays.upper = {1e20, -most};
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_THAT(program.pool().lower, ElementsAre(most, -kInfinity));
  EXPECT_THAT(program.pool().upper, ElementsAre(kInfinity, -most));
}

struct Fault {
  const char *name;
  std::function<void(Arrays &, ColumnBatch &)> spoil;
};

void PrintTo(const Fault &fault, std::ostream *out) {
  *out << fault.name;
}

class RefusedColumns : public ::testing::TestWithParam<Fault> {};

TEST_P(RefusedColumns, ChangeNothing) {
  LinearProgram program = withThreeRows();
  const Arrays good;
  ASSERT_TRUE(program.addColumns(good.batch()));
  const ColumnPool before = program.pool();
  Arrays arrays;
  arrays.costs[0] = 100;
  ColumnBatch batch = arrays.batch();
  GetParam().spoil(arrays, batch);
  EXPECT_FALSE(program.addColumns(batch));
  EXPECT_EQ(program.pool(), before);
  EXPECT_EQ(program.largestCost(), 4.0);
  EXPECT_TRUE(program.isCovering());
}

INSTANTIATE_TEST_SUITE_P(
    Each, RefusedColumns,
    ::testing::Values(
        Fault{"FewerThanNone", [](Arrays &, ColumnBatch &b) { b.columns = -1; }},
        Fault{"FewerThanNoEntries", [](Arrays &, ColumnBatch &b) { b.nonzeros = -1; }},
        Fault{"NoCosts", [](Arrays &, ColumnBatch &b) { b.costs = nullptr; }},
        Fault{"NoStarts", [](Arrays &, ColumnBatch &b) { b.starts = nullptr; }},
        Fault{"NoLowerBounds", [](Arrays &, ColumnBatch &b) { b.lower = nullptr; }},
        Fault{"NoUpperBounds", [](Arrays &, ColumnBatch &b) { b.upper = nullptr; }},
        Fault{"NoRows", [](Arrays &, ColumnBatch &b) { b.rows = nullptr; }},
        Fault{"NoValues", [](Arrays &, ColumnBatch &b) { b.values = nullptr; }},
        Fault{"ANegativeStart", [](Arrays &a, ColumnBatch &) { a.starts[1] = -1; }},
        Fault{"ANegativeCount", [](Arrays &a, ColumnBatch &) { a.counts[1] = -1; }},
        Fault{"AnEndBeyond32Bits", [](Arrays &a, ColumnBatch &) { a.counts[1] = kMostInt; }},
        Fault{"EntriesBeyond32Bits",
              [](Arrays &a, ColumnBatch &) {
                a.starts = {0, 0};
                a.counts = {kMostInt, 1};
              }},
        Fault{"WithThoseHeldBeyond32Bits",
              [](Arrays &a, ColumnBatch &) {
                a.starts = {0, 0};
                a.counts = {kMostInt - 2, 0};
              }},
        Fault{"AStartBehindTheNext",
              [](Arrays &a, ColumnBatch &b) {
                b.counts = nullptr;
                a.starts = {2, 1};
              }},
        Fault{"AStartBehindTheEnd",
              [](Arrays &a, ColumnBatch &b) {
                b.counts = nullptr;
                b.nonzeros = 1;
                a.starts = {0, 2};
              }},
        Fault{"ANextStartBehindTheEnd",
              [](Arrays &a, ColumnBatch &b) {
                b.counts = nullptr;
                b.nonzeros = 1;
                a.rows = {0, 1, 2, 0};
                a.values = {1, 1, 1, 1};
                a.starts = {0, 3};
              }},
        Fault{"ACostThatIsNoNumber", [](Arrays &a, ColumnBatch &) { a.costs[1] = kNan; }},
        Fault{"AnInfiniteCost", [](Arrays &a, ColumnBatch &) { a.costs[1] = 1e20; }},
        Fault{"ANegativeInfiniteCost", [](Arrays &a, ColumnBatch &) { a.costs[1] = -1e20; }},
        Fault{"ALowerBoundThatIsNoNumber", [](Arrays &a, ColumnBatch &) { a.lower[1] = kNan; }},
        Fault{"AnUpperBoundThatIsNoNumber", [](Arrays &a, ColumnBatch &) { a.upper[1] = kNan; }},
        Fault{"AnInfiniteLowerBound", [](Arrays &a, ColumnBatch &) { a.lower[1] = 1e20; }},
        Fault{"AnUpperBoundOfMinusInfinity", [](Arrays &a, ColumnBatch &) { a.upper[1] = -1e20; }},
        Fault{"ANegativeRow", [](Arrays &a, ColumnBatch &) { a.rows[3] = -1; }},
        Fault{"ARowThatIsNotThere", [](Arrays &a, ColumnBatch &) { a.rows[3] = 3; }},
        Fault{"ARowTwice", [](Arrays &a, ColumnBatch &) { a.rows[1] = 0; }},
        Fault{"ACoefficientThatIsNoNumber", [](Arrays &a, ColumnBatch &) { a.values[3] = kNan; }},
        Fault{"AnInfiniteCoefficient", [](Arrays &a, ColumnBatch &) { a.values[3] = -1e20; }}),
    [](const auto &fault) { return std::string(fault.param.name); });

TEST(Covering, IsWhatPatternGenerationAsksFor) {
  LinearProgram program = withThreeRows();
  const Arrays arrays;
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  EXPECT_TRUE(program.isCovering());
  EXPECT_FALSE(withRows({1, 2}, "GL").isCovering());
  EXPECT_FALSE(withRows({1, 2}, "EG").isCovering());
}

TEST(Covering, EndsWithTheFirstColumnOfAnotherKind) {
  using Spoil = std::function<void(Arrays &)>;
  const std::vector<Spoil> kinds = {
      [](Arrays &a) { a.costs[0] = -1; }, [](Arrays &a) { a.lower[0] = 1; },
      [](Arrays &a) { a.lower[0] = -1; }, [](Arrays &a) { a.upper[0] = 5; },
      [](Arrays &a) { a.values[1] = -1; }};
  for (const Spoil &spoil : kinds) {
    LinearProgram program = withThreeRows();
    Arrays arrays;
    spoil(arrays);
    ASSERT_TRUE(program.addColumns(arrays.batch()));
    EXPECT_FALSE(program.isCovering());
    const Arrays good;
    ASSERT_TRUE(program.addColumns(good.batch()));
    EXPECT_FALSE(program.isCovering()) << "what comes later changes nothing";
  }
}

TEST(Pool, CanBeMovedOut) {
  LinearProgram program = withThreeRows();
  const Arrays arrays;
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  const ColumnPool copy = program.pool();
  EXPECT_EQ(program.releasePool(), copy);
}

TEST(ReducedCost, IsTheCostWithoutWhatTheRowsPay) {
  LinearProgram program = withThreeRows();
  const Arrays arrays;
  ASSERT_TRUE(program.addColumns(arrays.batch()));
  const std::vector<double> duals = {0.5, 0.25, 1};
  EXPECT_EQ(reducedCost(program.pool(), 0, duals.data()), 3 - 0.5 - 2);
  EXPECT_EQ(reducedCost(program.pool(), 1, duals.data()), 4 - 5 * 0.25);
}

}  // namespace
}  // namespace corvane::lp::testing
