#include "generation/master_lp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "generation/link_hooks.h"
#include "support/array_contents.h"
#include "support/fatal_end.h"
#include "support/pattern_set_dump.h"

namespace corvane {
namespace {

using support::contents;
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

  void build(const std::vector<double> &widths, const std::vector<DemandEntry> &demands) {
    buildMasterLp(widths, demands, 80, sets_.ofGrade("Fine"), sets_, lp_, log_);
  }

  PatternSets sets_;
  LpArrays lp_;
  std::ostringstream log_;
};

TEST_F(MasterLp, OfThreeWidthsHasTheirDemandsAnIdentityAndTheSmallestDeckleWidth) {
  build({30, 20, 10}, {{30, 4}, {20, 7}, {10, 2}});
  EXPECT_EQ(lp_.rows(), 3);
  EXPECT_EQ(lp_.columns(), 3);
  EXPECT_THAT(contents(lp_.rightHandSides), ElementsAre(4, 7, 2));
  EXPECT_THAT(contents(lp_.objective), Each(80));
  EXPECT_THAT(contents(lp_.senses), Each('G'));
  EXPECT_THAT(contents(lp_.starts), ElementsAre(0, 1, 2));
  EXPECT_THAT(contents(lp_.counts), ElementsAre(1, 1, 1));
  EXPECT_THAT(contents(lp_.indices), ElementsAre(0, 1, 2));
  EXPECT_THAT(contents(lp_.values), ElementsAre(1, 1, 1));
  EXPECT_THAT(contents(lp_.lower), ElementsAre(0, 0, 0));
  EXPECT_THAT(contents(lp_.upper), ElementsAre(1e20, 1e20, 1e20));
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
  build({110, 30}, {{110, 1}, {30, 1}});
  EXPECT_EQ(dump(*sets_.ofGrade("Fine")[1]), "Fine 80:\n30 trim 50\n110 trim -30\n");
  EXPECT_EQ(lp_.columns(), 2);
}

TEST_F(MasterLp, OfAPeriodWithoutDemandHasZeroRightHandSides) {
  build({30, 20}, {});
  EXPECT_THAT(contents(lp_.rightHandSides), ElementsAre(0, 0));
}

TEST_F(MasterLp, KeepsQuantitiesOfAnySize) {
  build({30}, {{30, 2147483647}});
  EXPECT_THAT(contents(lp_.rightHandSides), ElementsAre(2147483647.0));
}

// The seed is a column all the same; only no set takes it.
TEST_F(MasterLp, CountsTheSeedsOfADeckleWidthWithoutASet) {
  buildMasterLp({30}, {}, 100, sets_.ofGrade("Fine"), sets_, lp_, log_);
  EXPECT_EQ(lp_.columns(), 1);
  EXPECT_EQ(sets_.totalPatterns, 1);
  EXPECT_EQ(dump(sets_), "Fine 120:\nBoard 80:\nFine 80:\n");
}

TEST_F(MasterLp, TakesItsArraysInOrder) {
  const char *parts[] = {"objective function coefficients",
                         "senses",
                         "constraint matrix",
                         "constraint matrix",
                         "constraint matrix",
                         "constraint matrix",
                         "lower bounds",
                         "upper bounds",
                         "right hand side"};
  int n = 0;
  for (const char *part : parts) {
    ++n;
    const auto step = [&](std::ostream &log) {
      const support::RefusedArray refused(n);
      buildMasterLp({30, 20}, {}, 80, sets_.ofGrade("Fine"), sets_, lp_, log);
    };
    support::expectRunEnds(step, std::string("Error: Could not allocate memory for ") + part + ".");
  }
}

}  // namespace
}  // namespace corvane
