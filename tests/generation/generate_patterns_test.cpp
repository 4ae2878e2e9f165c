#include "generation/generate_patterns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "generation/test_clock.h"
#include "scripted_lp.h"
#include "support/mill.h"
#include "support/pattern_set_dump.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::dump;
using support::Mill;
using support::StreamCapture;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class PatternGeneration : public testing::Test {
 protected:
  void SetUp() override { scripted_lp::reset(); }

  // Returns the log.
  std::string generate(Mill &mill) {
    std::ostringstream log;
    const StreamCapture out(std::cout);
    generatePatterns({mill.data(), settings_, sets_, random_, log, progress_});
    return log.str();
  }

  std::string generateWithSeed(qint32 seed) {
    Mill mill("N,W,Fine,100,1,1,1\n",
              "1,Fine,37,3,A\n1,Fine,31,5,A\n1,Fine,26,7,A\n1,Fine,19,7,A\n1,Fine,13,9,A\n");
    settings_.seed = seed;
    settings_.newPatternsPerIteration = 10;
    PatternSets sets;
    std::ostringstream log;
    generateAllColumns({mill.data(), settings_, sets, random_, log, progress_});
    return dump(sets);
  }

  GenerationSettings settings_;
  PatternSets sets_;
  PatternRandom random_;
  ProgressLine progress_;
};

TEST_F(PatternGeneration, LogsTheSeedAndHandsItToTheGenerator) {
  Mill mill("N,W,Fine,100,1,1,1\n", "");
  settings_.seed = 42;
  EXPECT_EQ(generate(mill), "Seed                 : 42\n");
  EXPECT_EQ(random_.state(), 42U);
}

TEST_F(PatternGeneration, TakesASeedOfZeroAsItIs) {
  Mill mill("N,W,Fine,100,1,1,1\n", "");
  settings_.seed = 0;
  EXPECT_EQ(generate(mill), "Seed                 : 0\n");
  EXPECT_EQ(random_.state(), 0U);
}

TEST_F(PatternGeneration, WithoutASeedTakesTheSecondsOfTheClockModulo10000) {
  const support::TestClock clock(1274104987, 0);
  Mill mill("N,W,Fine,100,1,1,1\n", "");
  EXPECT_EQ(generate(mill), "Seed                 : 4987\n");
  EXPECT_EQ(random_.state(), 4987U);
}

TEST_F(PatternGeneration, OfTwoCuttersOfOneGradeAndDeckleWidthMakesOneSet) {
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n");
  generate(mill);
  EXPECT_EQ(sets_.all.size(), 1);
}

TEST_F(PatternGeneration, OfTwoGradesOfOneDeckleWidthMakesTwoSets) {
  Mill mill("N,W1,Fine,100,1,1,1\nN,W1,Board,100,1,1,1\n", "1,Fine,60,3,Acme\n1,Board,60,3,Acme\n");
  generate(mill);
  ASSERT_EQ(sets_.all.size(), 2);
  EXPECT_EQ(sets_.all.first()->grade, "Board");
  EXPECT_EQ(sets_.all.last()->grade, "Fine");
}

TEST_F(PatternGeneration, MakesNoSetForAGradeWithoutOrders) {
  Mill mill("N,W1,Fine,100,1,1,1\nN,W1,Board,100,1,1,1\n", "1,Fine,60,3,Acme\n");
  generate(mill);
  ASSERT_EQ(sets_.all.size(), 1);
  EXPECT_EQ(sets_.all.first()->grade, "Fine");
}

TEST_F(PatternGeneration, SortsTheDeckleWidthsOfAGradeAscendingButMakesTheirSetsInCutterOrder) {
  Mill mill(
      "N,W1,Fine,120.5,1,1,1\nN,W2,Fine,80,1,1,1\nN,W3,Fine,100,1,1,1\n"
      "N,W4,Fine,80,1,1,1\n",
      "");
  EXPECT_THAT(createPatternSets("Fine", mill.data().cuttersOf("Fine"), sets_),
              ElementsAre(80, 100, 120.5));
  EXPECT_EQ(dump(sets_), "Fine 120.5:\nFine 80:\nFine 100:\n");
}

TEST_F(PatternGeneration, SeedsTheMasterLpWithTheSmallestDeckleWidth) {
  settings_.timeLimit = 0;
  Mill mill("N,W1,Fine,120.5,1,1,1\nN,W2,Fine,80,1,1,1\nN,W3,Fine,100,1,1,1\n",
            "1,Fine,60,3,Acme\n");
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp")[0], HasSubstr("objective=[80]"));
}

TEST_F(PatternGeneration, RunsGradeByGradeAndThenTheFinalSelection) {
  settings_.timeLimit = 0;
  Mill mill("N,W1,Fine,100,1,1,1\nN,W1,Board,90,1,1,1\n", "1,Fine,60,3,Acme\n1,Board,50,4,Acme\n");
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"),
              ElementsAre(AllOf(HasSubstr("env=env1"), HasSubstr("objective=[90], rhs=[4]")),
                          AllOf(HasSubstr("env=env2"), HasSubstr("objective=[100], rhs=[3]")),
                          AllOf(HasSubstr("env=env3"), HasSubstr("objective=[90], rhs=[4]")),
                          AllOf(HasSubstr("env=env3"), HasSubstr("objective=[100], rhs=[3]"))));
  EXPECT_THAT(scripted_lp::calls_of("close"), testing::SizeIs(3));
}

TEST_F(PatternGeneration, ReportsAndPrunesAfterTheFinalSelection) {
  settings_.seed = 1;
  settings_.timeLimit = 0;
  settings_.occurMin = 2;
  Mill mill("N,W1,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n1,Fine,40,3,Acme\n");
  scripted_lp::set_script("getx:1=[0,3]");
  EXPECT_EQ(generate(mill),
            "Seed                 : 1\n"
            "Deckle Width: 100.000, Demand Width: 60.000 is in 1 patterns.\n"
            "Deckle Width: 100.000, Demand Width: 40.000 is in 1 patterns.\n");
  EXPECT_EQ(dump(sets_),
            "Fine 100:\n"
            "40 trim 60 x [0] cost [0] in [1]\n"
            "60 trim 40 x [3] cost [0] in [1]\n");
}

TEST_F(PatternGeneration, PrunesWhatNoPeriodTakes) {
  settings_.seed = 1;
  Mill mill("N,W1,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n1,Fine,40,3,Acme\n");
  // Columns: 40, 60, 40 40, 60 40; of these the last alone is in use.
  scripted_lp::set_script("getx:1=[0,0,0,3]");
  generate(mill);
  EXPECT_EQ(dump(sets_), "Fine 100:\n60 40 trim 0 x [3] cost [0] in [1]\n");
  EXPECT_EQ(sets_.totalPatterns, 4);
}

TEST_F(PatternGeneration, WithOneSeedGivesTheSamePatternsEveryTime) {
  const std::string first = generateWithSeed(7);
  EXPECT_THAT(first, Not(IsEmpty()));
  EXPECT_EQ(generateWithSeed(7), first);
}

TEST_F(PatternGeneration, WithAnotherSeedGivesOtherPatterns) {
  EXPECT_NE(generateWithSeed(7), generateWithSeed(8));
}

}  // namespace
}  // namespace corvane
