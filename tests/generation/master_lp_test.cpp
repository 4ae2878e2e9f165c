#include "generation/master_lp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "support/pattern_set_dump.h"

namespace corvane {
namespace {

using support::dump;
using testing::Each;
using testing::ElementsAre;

class MasterLp : public testing::Test {
 protected:
  void SetUp() override {
    sets_.add("Fine", 120);
    sets_.add("Board", 80);
    sets_.add("Fine", 80);
  }

  LpProblem build(const std::vector<double> &widths, const std::vector<DemandEntry> &demands,
                  double smallestDeckleWidth = 80) {
    return buildMasterLp("Fine", widths, demands, smallestDeckleWidth, sets_, log_);
  }

  PatternSets sets_;
  std::ostringstream log_;
};

TEST_F(MasterLp, OfThreeWidthsHasTheirDemandsAnIdentityAndTheSmallestDeckleWidth) {
  const LpProblem lp = build({30, 20, 10}, {{30, 4}, {20, 7}, {10, 2}});
  EXPECT_EQ(lp.rows(), 3);
  EXPECT_EQ(lp.columns.count(), 3);
  EXPECT_THAT(lp.rightHandSides, ElementsAre(4, 7, 2));
  EXPECT_THAT(lp.columns.objective, Each(80));
  EXPECT_THAT(lp.senses, Each('G'));
  EXPECT_THAT(lp.columns.starts, ElementsAre(0, 1, 2));
  EXPECT_THAT(lp.columns.counts, ElementsAre(1, 1, 1));
  EXPECT_THAT(lp.columns.indices, ElementsAre(0, 1, 2));
  EXPECT_THAT(lp.columns.values, ElementsAre(1, 1, 1));
  EXPECT_THAT(lp.columns.lower, ElementsAre(0, 0, 0));
  EXPECT_THAT(lp.columns.upper, ElementsAre(1e20, 1e20, 1e20));
}

TEST_F(MasterLp, SeedsOnePatternAWidthInTheGradesSetOfTheSmallestDeckleWidth) {
  build({30, 20, 10}, {{30, 4}, {20, 7}, {10, 2}});
  EXPECT_EQ(dump(sets_),
            "Fine 120:\n"
            "Board 80:\n"
            "Fine 80:\n10 trim 70\n20 trim 60\n30 trim 50\n");
  EXPECT_EQ(sets_.totalPatterns, 3);
}

TEST_F(MasterLp, OfASecondPeriodAddsNoSeedButCountsItsWidthsAgain) {
  build({30, 20, 10}, {});
  build({30, 20, 10}, {});
  EXPECT_EQ(sets_.ofGrade("Fine")[1]->patterns->count(), 3);
  EXPECT_EQ(sets_.totalPatterns, 6);
  EXPECT_EQ(sets_.duplicates, 0);
}

TEST_F(MasterLp, GivesASeedWiderThanTheSmallestDeckleWidthANegativeTrim) {
  const LpProblem lp = build({110, 30}, {{110, 1}, {30, 1}});
  EXPECT_EQ(dump(*sets_.ofGrade("Fine")[1]), "Fine 80:\n30 trim 50\n110 trim -30\n");
  EXPECT_EQ(lp.columns.count(), 2);
}

TEST_F(MasterLp, OfAPeriodWithoutDemandHasZeroRightHandSides) {
  const LpProblem lp = build({30, 20}, {});
  EXPECT_THAT(lp.rightHandSides, ElementsAre(0, 0));
}

TEST_F(MasterLp, KeepsQuantitiesOfAnySize) {
  const LpProblem lp = build({30}, {{30, 2147483647}});
  EXPECT_THAT(lp.rightHandSides, ElementsAre(2147483647.0));
}

// The seed is a column all the same; only no set takes it.
TEST_F(MasterLp, CountsTheSeedsOfADeckleWidthWithoutASet) {
  const LpProblem lp = build({30}, {}, 100);
  EXPECT_EQ(lp.columns.count(), 1);
  EXPECT_EQ(sets_.totalPatterns, 1);
  EXPECT_EQ(dump(sets_), "Fine 120:\nBoard 80:\nFine 80:\n");
}

}  // namespace
}  // namespace corvane
