#include "generation/column_generation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <sstream>

#include "generation/generate_patterns.h"
#include "generation/test_clock.h"
#include "scripted_lp.h"
#include "support/fatal_end.h"
#include "support/heap_probe.h"
#include "support/mill.h"
#include "support/pattern_set_dump.h"
#include "support/stream_capture.h"
#include "support/terminal.h"

namespace corvane {
namespace {

using support::dump;
using support::Mill;
using support::StreamCapture;
using support::TestClock;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kOneCutter[] = "North,W1,Fine,100,500,2.5,0.5\n";
constexpr char kTwoWidths[] = "1,Fine,60,3,Acme\n1,Fine,40,5,Acme\n";

// The words of the calls, without what they were given.
std::vector<std::string> operations() {
  std::vector<std::string> names;
  for (const std::string &call : scripted_lp::calls()) {
    names.push_back(call.substr(0, call.find('(')));
  }
  return names;
}

class ColumnGeneration : public testing::Test {
 protected:
  void SetUp() override {
    scripted_lp::reset();
    random_.seed(42);
  }

  // Generates for a grade of the mill, whose sets are made first.
  std::string generate(Mill &mill, const QString &grade = "Fine") {
    const StreamCapture out(std::cout);
    generateInto(mill, grade, log_);
    return out.text();
  }

  void generateInto(Mill &mill, const QString &grade, std::ostream &log) {
    const std::vector<double> deckleWidths =
        createPatternSets(grade, mill.data().cuttersOf(grade), sets_);
    generateColumns(*mill.data().demand.find(grade), deckleWidths,
                    {mill.data(), settings_, sets_, random_, log, progress_});
  }

  GenerationSettings settings_;
  PatternSets sets_;
  PatternRandom random_;
  ProgressLine progress_;
  std::ostringstream log_;
};

TEST_F(ColumnGeneration, SolvesPricesAddsAndSolvesAgainInOneEnvironment) {
  Mill mill(kOneCutter, kTwoWidths);
  EXPECT_EQ(generate(mill), "");
  EXPECT_THAT(operations(), ElementsAre("CPXopenCPLEXruntime", "CPXcreateprob", "CPXcopylp",   //
                                        "CPXprimopt", "CPXgetstat", "CPXgetpi", "CPXaddcols",  //
                                        "CPXprimopt", "CPXgetstat", "CPXgetpi", "CPXcloseCPLEX"));
  EXPECT_EQ(dump(sets_),
            "Fine 100:\n"
            "40 trim 60\n"
            "60 trim 40\n"
            "40 40 trim 20\n"
            "60 40 trim 0\n");
  EXPECT_EQ(sets_.totalPatterns, 4);
  // 100 candidates of the first iteration, of which two were new, and none of the second.
  EXPECT_EQ(sets_.duplicates, 98);
}

TEST_F(ColumnGeneration, LoadsTheMasterLpAndAddsColumnsAtTheirDeckleWidth) {
  Mill mill(kOneCutter, kTwoWidths);
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"),
              ElementsAre(HasSubstr("columns=2, rows=2, objective_sense=1, objective=[100 100], "
                                    "rhs=[3 5], senses=[G G]")));
  EXPECT_THAT(scripted_lp::calls_of("addcols"),
              ElementsAre(AllOf(HasSubstr("columns=2,"), HasSubstr("objective=[100 100]"))));
}

TEST_F(ColumnGeneration, WithATimeLimitOfZeroKeepsToTheSeedsAndSaysNothing) {
  settings_.timeLimit = 0;
  const TestClock clock(1000, 1000);
  Mill mill(kOneCutter, kTwoWidths);
  EXPECT_EQ(generate(mill), "");
  EXPECT_EQ(log_.str(), "");
  EXPECT_EQ(dump(sets_), "Fine 100:\n40 trim 60\n60 trim 40\n");
  EXPECT_THAT(scripted_lp::calls_of("addcols"), IsEmpty());
  EXPECT_THAT(scripted_lp::calls_of("primopt"), SizeIs(1));
  EXPECT_THAT(scripted_lp::calls_of("getpi"), SizeIs(1));
  EXPECT_EQ(random_.state(), 42U);
}

TEST_F(ColumnGeneration, WithoutATimeLimitNeverTimesOut) {
  const TestClock clock(1000, 1000);
  Mill mill(kOneCutter, kTwoWidths);
  EXPECT_EQ(generate(mill), "");
  EXPECT_EQ(log_.str(), "");
  EXPECT_EQ(sets_.totalPatterns, 4);
}

// The clock shows 0 at the start, 1 before the first candidate and 2 before the second.
TEST_F(ColumnGeneration, TimesOutWhenMoreSecondsThanTheLimitHavePassed) {
  settings_.timeLimit = 1;
  const TestClock clock(0, 1);
  Mill mill(kOneCutter, kTwoWidths);
  const std::string line =
      "Timed out on grade: Fine, deckle width: 100.000 after generating 1 patterns.\n";
  const std::string out = generate(mill);
  EXPECT_EQ(log_.str(), out);
  // Each iteration has the time anew and makes one candidate; the last one is a duplicate, or none
  // is found.
  EXPECT_EQ(out.substr(0, line.size()), line);
  EXPECT_EQ(sets_.totalPatterns, 2 + static_cast<int>(scripted_lp::calls_of("addcols").size()));
  EXPECT_THAT(scripted_lp::calls_of("addcols"), Each(HasSubstr("columns=1,")));
}

TEST_F(ColumnGeneration, TimesOutBeforeTheFirstCandidateAndGoesOnWithTheNextDeckleWidth) {
  settings_.timeLimit = 1;
  const TestClock clock(0, 2);
  Mill mill("North,W1,Fine,100,1,1,1\nNorth,W2,Fine,80.125,1,1,1\n", kTwoWidths);
  EXPECT_EQ(generate(mill),
            "Timed out on grade: Fine, deckle width: 100.000 after generating 0 patterns.\n"
            "Timed out on grade: Fine, deckle width: 80.125 after generating 0 patterns.\n");
  EXPECT_THAT(scripted_lp::calls_of("addcols"), IsEmpty());
}

TEST_F(ColumnGeneration, SkipsTheFirstPeriodsWithoutDemandAndBuildsNoLpForThem) {
  Mill mill("N,W,Fine,100,1,1,1\nN,W,Board,100,1,1,1\n",
            "1,Board,50,1,Acme\n2,Board,50,1,Acme\n3,Fine,60,3,Acme\n");
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("createprob"), SizeIs(1));
  EXPECT_THAT(scripted_lp::calls_of("copylp"), ElementsAre(HasSubstr("rhs=[3]")));
}

TEST_F(ColumnGeneration, BuildsAPeriodWithoutDemandOverTheWidthsOfTheLastOneWithZeroDemand) {
  Mill mill("N,W,Fine,100,1,1,1\nN,W,Board,100,1,1,1\n",
            "1,Fine,60,3,Acme\n1,Fine,40,5,Acme\n2,Fine,30,7,Acme\n3,Board,50,1,Acme\n"
            "4,Board,50,1,Acme\n5,Fine,20,9,Acme\n");
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"),
              ElementsAre(HasSubstr("rhs=[3 5]"), HasSubstr("rhs=[7]"), HasSubstr("rhs=[0]"),
                          HasSubstr("rhs=[0]"), HasSubstr("rhs=[9]")));
}

TEST_F(ColumnGeneration, StartsEachGradeWithoutARememberedPeriod) {
  Mill mill("N,W,Fine,100,1,1,1\nN,W,Board,100,1,1,1\n", "1,Board,50,1,Acme\n2,Fine,60,3,Acme\n");
  generate(mill, "Board");
  scripted_lp::reset();
  generate(mill, "Fine");
  EXPECT_THAT(scripted_lp::calls_of("copylp"), SizeIs(1));
}

TEST_F(ColumnGeneration, AnIterationOfDuplicatesEndsThePeriodWithoutAddingColumns) {
  Mill mill(kOneCutter, kTwoWidths + std::string("2,Fine,60,3,Acme\n2,Fine,40,5,Acme\n"));
  generate(mill);
  // The second period starts from the seeds again, but finds only what its set holds already.
  EXPECT_THAT(scripted_lp::calls_of("addcols"), SizeIs(1));
  EXPECT_THAT(scripted_lp::calls_of("primopt"), SizeIs(3));
  EXPECT_EQ(sets_.duplicates, 198);
  EXPECT_EQ(sets_.totalPatterns, 6);
}

TEST_F(ColumnGeneration, MakesAtMostTheGivenCandidatesADeckleWidthAndIteration) {
  settings_.newPatternsPerIteration = 1;
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Fine,110,1,1,1\n", kTwoWidths);
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("addcols"), testing::Not(IsEmpty()));
  EXPECT_THAT(scripted_lp::calls_of("addcols"),
              Each(testing::AnyOf(HasSubstr("columns=1,"), HasSubstr("columns=2,"))));
}

TEST_F(ColumnGeneration, MakesNoCandidateWhereNoneIsAllowed) {
  settings_.newPatternsPerIteration = 0;
  Mill mill(kOneCutter, kTwoWidths);
  generate(mill);
  EXPECT_EQ(random_.state(), 42U);
  EXPECT_EQ(sets_.totalPatterns, 2);
}

TEST_F(ColumnGeneration, KeepsToTheMostWidthsInAPattern) {
  settings_.maximumWidthsInPattern = 5;
  Mill mill(kOneCutter, "1,Fine,10,30,Acme\n1,Fine,9,30,Acme\n1,Fine,8,30,Acme\n");
  generate(mill);
  int most = 0;
  forEachElement(*sets_.ofGrade("Fine")[0]->patterns, [&](const Pattern &pattern) {
    most = std::max(most, static_cast<int>(pattern.widths.size()));
  });
  EXPECT_EQ(most, 5);
}

TEST_F(ColumnGeneration, PricesEveryDeckleWidthOfTheGradeAndNoOther) {
  sets_.add("Board", 100);
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Fine,160,1,1,1\n", kTwoWidths);
  generate(mill);
  EXPECT_EQ(sets_.ofGrade("Board")[0]->patterns->count(), 0);
  EXPECT_GT(sets_.ofGrade("Fine")[0]->patterns->count(), 2);
  EXPECT_GT(sets_.ofGrade("Fine")[1]->patterns->count(), 0);
  // No seed stands in the wider set.
  forEachElement(*sets_.ofGrade("Fine")[1]->patterns, [](const Pattern &pattern) {
    double sum = pattern.trim;
    for (const double width : pattern.widths) {
      sum += width;
    }
    EXPECT_EQ(sum, 160);
    EXPECT_GT(pattern.widths.size(), 1);
  });
}

// Odd, but relied on: the empty pattern is found at once, again and again.
TEST_F(ColumnGeneration, GivesANegativeDeckleWidthTheEmptyPattern) {
  settings_.newPatternsPerIteration = 10;
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Fine,-5,1,1,1\n", "1,Fine,60,3,Acme\n");
  scripted_lp::set_script("getstat:1+=1;getpi:1+=[0]");
  generate(mill);
  EXPECT_EQ(dump(*sets_.ofGrade("Fine")[1]), "Fine -5:\n trim -5\n60 trim -65\n");
  EXPECT_THAT(scripted_lp::calls_of("addcols"),
              ElementsAre(AllOf(HasSubstr("columns=1, nonzeros=0, objective=[-5], matbeg=[0]"))));
  EXPECT_EQ(sets_.totalPatterns, 2);
  EXPECT_EQ(sets_.duplicates, 19);
  EXPECT_EQ(sets_.ofGrade("Fine")[0]->patterns->count(), 0);
}

TEST_F(ColumnGeneration, ChoosesTheBarrierMethodBySetting) {
  settings_.barrier = true;
  Mill mill(kOneCutter, kTwoWidths);
  generate(mill);
  EXPECT_THAT(scripted_lp::calls_of("primopt"), IsEmpty());
  EXPECT_THAT(scripted_lp::calls_of("hybbaropt"), SizeIs(2));
}

TEST_F(ColumnGeneration, ShowsGradePeriodIterationAndPatternsOnATerminal) {
  const support::Terminal terminal;
  if (terminal.file() < 0) {
    GTEST_SKIP() << "no terminal can be made here";
  }
  const StreamCapture errors(std::cerr);
  const support::StandardErrorOn redirected(terminal.file());
  Mill mill(kOneCutter, kTwoWidths);
  const std::vector<double> deckleWidths =
      createPatternSets("Fine", mill.data().cuttersOf("Fine"), sets_);
  std::chrono::steady_clock::time_point now;
  ProgressLine progress([&now] { return now += std::chrono::seconds(1); });
  generateColumns(*mill.data().demand.find("Fine"), deckleWidths,
                  {mill.data(), settings_, sets_, random_, log_, progress});
  EXPECT_THAT(errors.text(),
              testing::StartsWith("\rgrade Fine, period 1, iteration 1, patterns 2, "));
  EXPECT_EQ(log_.str(), "");
}

// Whether or not a column comes. The sizes are those of 128 columns and 512 nonzeros.
TEST_F(ColumnGeneration, TakesTheFirstMemoryForTheColumnsOfAnIterationAhead) {
  Mill mill(kOneCutter, kTwoWidths);
  settings_.timeLimit = 0;
  const auto expectWords = [&](std::size_t bytes, int n, const char *what) {
    const auto step = [&](std::ostream &log) {
      support::HeapProbe heap;
      heap.failRequestOf(bytes, n);
      generateInto(mill, "Fine", log);
    };
    support::expectRunEnds(step, std::string("Error: Could not allocate memory for ") + what + ".");
  };
  expectWords(128 * sizeof(double), 1, "additional objective function coefficients");
  expectWords(128 * sizeof(int), 1, "additions to the constraint matrix");
  expectWords(512 * sizeof(int), 1, "additions to the constraint matrix");
  expectWords(512 * sizeof(double), 1, "additions to the constraint matrix");
  expectWords(128 * sizeof(double), 2, "additions to the lower bounds");
  expectWords(128 * sizeof(double), 3, "additions to the upper bounds");
}

TEST_F(ColumnGeneration, EndsTheRunWhenColumnsCannotBeAdded) {
  Mill mill(kOneCutter, kTwoWidths);
  scripted_lp::set_script("addcols:1=1");
  support::expectRunEnds([&](std::ostream &log) { generateInto(mill, "Fine", log); },
                         "Error: Could not add columns to LP.");
}

TEST_F(ColumnGeneration, NamesGradeAndPeriodOfAFailedSolve) {
  Mill mill(kOneCutter, "W1,Fine,60,3,Acme\nW2,Fine,40,5,Acme\n");
  settings_.timeLimit = 0;
  scripted_lp::set_script("primopt:2=9;getstat:2=4");
  support::expectRunEnds([&](std::ostream &log) { generateInto(mill, "Fine", log); },
                         "Error: No solution to lp, status : 9\nGrade : Fine\nPeriod : W2\n"
                         "Error: Solution not optimal, status : 4");
}

}  // namespace
}  // namespace corvane
