#include "generation/final_lp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <sstream>

#include "scripted_lp.h"
#include "support/fatal_end.h"
#include "support/mill.h"
#include "support/pattern_set_dump.h"
#include "support/stream_capture.h"
#include "support/terminal.h"

namespace corvane {
namespace {

using support::addPattern;
using support::dump;
using support::Mill;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class FinalLps : public testing::Test {
 protected:
  void SetUp() override { scripted_lp::reset(); }

  void solve(Mill &mill) { solveInto(mill, log_); }

  void solveInto(Mill &mill, std::ostream &log) {
    solveFinalLps({mill.data(), settings_, sets_, random_, log, progress_});
  }

  GenerationSettings settings_;
  PatternSets sets_;
  PatternRandom random_;
  ProgressLine progress_;
  std::ostringstream log_;
};

// Two deckle widths of one grade, two periods; 30 is wanted in the first period only.
class FinalLpsOfTwoPeriods : public FinalLps {
 protected:
  void SetUp() override {
    FinalLps::SetUp();
    PatternCompPattern &wide = sets_.add("Fine", 100);
    PatternCompPattern &narrow = sets_.add("Fine", 80);
    addPattern(wide, {45, 45});
    addPattern(wide, {45, 30});
    addPattern(narrow, {30, 30});
    addPattern(narrow, {45});
  }

  Mill mill_{"N,W1,Fine,100,1,1,1\nN,W2,Fine,80,1,1,1\n",
             "1,Fine,30,4,Acme\n1,Fine,45,6,Acme\n2,Fine,45,3,Acme\n"};
};

TEST_F(FinalLpsOfTwoPeriods, PutsAllPatternsOfTheGradeInOneLpSetBySet) {
  solve(mill_);
  // Columns: 45 30 and 45 45 of the first set, 45 and 30 30 of the second.
  const std::string lp =
      "columns=4, rows=2, objective_sense=1, objective=[100 100 80 80], rhs=[6 4], "
      "senses=[G G], matbeg=[0 2 3 4], matcnt=[2 1 1 1], matind=[0 1 0 0 1], "
      "matval=[1 1 2 1 2], lower=[0 0 0 0], upper=[1e+20 1e+20 1e+20 1e+20], ranges=null";
  ASSERT_THAT(scripted_lp::calls_of("copylp"), SizeIs(2));
  EXPECT_THAT(scripted_lp::calls_of("copylp")[0], HasSubstr(lp));
}

TEST_F(FinalLpsOfTwoPeriods, GivesAWidthThatThePeriodDoesNotWantTheRightHandSideZero) {
  solve(mill_);
  ASSERT_THAT(scripted_lp::calls_of("copylp"), SizeIs(2));
  EXPECT_THAT(scripted_lp::calls_of("copylp")[1], HasSubstr("rhs=[3 0]"));
}

TEST_F(FinalLpsOfTwoPeriods, FreesEveryProblemAndClosesOnceAtTheEnd) {
  solve(mill_);
  std::vector<std::string> names;
  for (const std::string &call : scripted_lp::calls()) {
    names.push_back(call.substr(3, call.find('(') - 3));
  }
  EXPECT_THAT(names,
              ElementsAre("openCPLEXruntime",                            //
                          "createprob", "copylp", "primopt", "getstat",  //
                          "getobjval", "getx", "getdj", "freeprob",      //
                          "createprob", "copylp", "primopt", "getstat",  //
                          "getobjval", "getx", "getdj", "freeprob",      //
                          "closeCPLEX"));
  EXPECT_THAT(scripted_lp::calls_of("getx")[0], HasSubstr("begin=0, end=3"));
}

TEST_F(FinalLpsOfTwoPeriods, StoresActivityReducedCostAndAZeroForEveryPeriod) {
  scripted_lp::set_script(
      "getx:1=[1,2,3,4];getdj:1=[-1,-2,-3,-4];getx:2=[5,0,0,6];getdj:2=[0,7,8,0]");
  solve(mill_);
  EXPECT_EQ(dump(sets_),
            "Fine 100:\n"
            "45 30 trim 25 x [1 5] cost [-1 0] in [0 0]\n"
            "45 45 trim 10 x [2 0] cost [-2 7] in [0 0]\n"
            "Fine 80:\n"
            "45 trim 35 x [3 0] cost [-3 8] in [0 0]\n"
            "30 30 trim 20 x [4 6] cost [-4 0] in [0 0]\n");
  EXPECT_EQ(log_.str(), "");
}

TEST_F(FinalLpsOfTwoPeriods, GiveEveryPeriodItsListByReducedCost) {
  scripted_lp::set_script("getdj:1=[-1,-2,-3,-4];getdj:2=[0,7,8,0]");
  solve(mill_);
  PatternCompPattern &set = *sets_.ofGrade("Fine")[0];
  EXPECT_TRUE(set.redCostSets.isEmpty());
  set.makeRedCostSets(2);
  ASSERT_EQ(set.redCostSets.size(), 2);
  // The first period puts 45 45 first, the second 45 30.
  EXPECT_EQ(support::widthsOf(*set.redCostSets.first()), "45 45 | 45 30");
  EXPECT_EQ(support::widthsOf(*set.redCostSets.last()), "45 30 | 45 45");
}

TEST_F(FinalLpsOfTwoPeriods, LeavesZerosWhereTheSolutionCannotBeRead) {
  scripted_lp::set_script("getobjval:1+=9;getx:1+=9;getdj:1+=9");
  solve(mill_);
  EXPECT_EQ(dump(*sets_.ofGrade("Fine")[1]),
            "Fine 80:\n"
            "45 trim 35 x [0 0] cost [0 0] in [0 0]\n"
            "30 30 trim 20 x [0 0] cost [0 0] in [0 0]\n");
}

TEST_F(FinalLpsOfTwoPeriods, NamesGradeAndPeriodOfAFailedSolve) {
  scripted_lp::set_script("primopt:2=12;getstat:2=5");
  support::expectRunEnds([this](std::ostream &log) { solveInto(mill_, log); },
                         "Error: No solution to lp, status : 12\nGrade : Fine\nPeriod : 2\n"
                         "Error: Solution not optimal, status : 5");
}

TEST_F(FinalLpsOfTwoPeriods, EndsTheRunWhenAProblemIsNotFreed) {
  scripted_lp::set_script("freeprob:2=1");
  support::expectRunEnds([this](std::ostream &log) { solveInto(mill_, log); },
                         "Error: LP did not unload successfully.");
}

TEST_F(FinalLps, OfEveryGradeTakesItsOwnRowsAndColumns) {
  Mill mill("N,W,Fine,100,1,1,1\nN,W,Board,90,1,1,1\n", "1,Fine,60,3,Acme\n1,Board,50,1,Acme\n");
  addPattern(sets_.add("Board", 90), {50});
  addPattern(sets_.add("Fine", 100), {60});
  solve(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"), ElementsAre(HasSubstr("objective=[90], rhs=[1]"),
                                                           HasSubstr("objective=[100], rhs=[3]")));
  EXPECT_THAT(scripted_lp::calls_of("open"), SizeIs(1));
}

TEST_F(FinalLps, TakesTheFirstOfTwoEntriesOfAWidth) {
  // A repeated order gives the entries (60, 3) and (60, 7).
  Mill mill("N,W,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n1,Fine,60,4,Acme\n");
  addPattern(sets_.add("Fine", 100), {60});
  solve(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"), ElementsAre(HasSubstr("rhs=[3]")));
}

TEST_F(FinalLps, WithoutOrdersOpensAndClosesOneEnvironment) {
  Mill mill("N,W,Fine,100,1,1,1\n", "");
  solve(mill);
  EXPECT_THAT(scripted_lp::calls(),
              ElementsAre(HasSubstr("CPXopenCPLEXruntime"), HasSubstr("CPXcloseCPLEX")));
}

TEST_F(FinalLpsOfTwoPeriods, ShowsGradePeriodAndPatternsOnATerminal) {
  const support::Terminal terminal;
  if (terminal.file() < 0) {
    GTEST_SKIP() << "no terminal can be made here";
  }
  const support::StreamCapture errors(std::cerr);
  const support::StandardErrorOn redirected(terminal.file());
  std::chrono::steady_clock::time_point now;
  ProgressLine progress([&now] { return now += std::chrono::seconds(1); });
  solveFinalLps({mill_.data(), settings_, sets_, random_, log_, progress});
  EXPECT_THAT(errors.text(),
              testing::StartsWith("\rfinal selection, grade Fine, period 1, patterns 4, "));
}

TEST_F(FinalLps, ChoosesTheBarrierMethodBySetting) {
  settings_.barrier = true;
  Mill mill("N,W,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n");
  addPattern(sets_.add("Fine", 100), {60});
  solve(mill);
  EXPECT_THAT(scripted_lp::calls_of("hybbaropt"), ElementsAre(HasSubstr("method=112")));
  EXPECT_THAT(scripted_lp::calls_of("primopt"), IsEmpty());
}

TEST(ConsistencyOfTheFinalLps, HoldsWhereTheCountsAgree) {
  std::ostringstream log;
  requireEqualCounts(7, 7, "no", log);
  EXPECT_EQ(log.str(), "");
}

TEST(ConsistencyOfTheFinalLps, EndsTheRunWhereTheyDoNot) {
  const char *words = "Error: Something wrong with coefficient matrix.";
  support::expectRunEnds([&](std::ostream &log) { requireEqualCounts(7, 8, words, log); }, words);
}

}  // namespace
}  // namespace corvane
