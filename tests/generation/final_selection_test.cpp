#include "generation/final_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <sstream>
#include <thread>

#include "generation/link_hooks.h"
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

class FinalSelection : public testing::Test {
 protected:
  void SetUp() override { scripted_lp::reset(); }

  void select(Mill &mill) { selectInto(mill, log_); }

  void selectInto(Mill &mill, std::ostream &log) {
    selectPatterns(mill.data().grades, mill.data().periods, mill.data().demand, settings_, sets_,
                   progress_, log);
  }

  GenerationSettings settings_;
  PatternSets sets_;
  ProgressLine progress_;
  std::ostringstream log_;
};

// Two deckle widths of one grade, two periods; 30 is wanted in the first period only.
class FinalSelectionOfTwoPeriods : public FinalSelection {
 protected:
  void SetUp() override {
    FinalSelection::SetUp();
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

TEST_F(FinalSelectionOfTwoPeriods, PutsAllPatternsOfTheGradeInOneLpSetBySet) {
  select(mill_);
  // Columns: 45 30 and 45 45 of the first set, 45 and 30 30 of the second.
  const std::string lp =
      "columns=4, rows=2, objective_sense=1, objective=[100 100 80 80], rhs=[6 4], "
      "senses=[G G], matbeg=[0 2 3 4], matcnt=[2 1 1 1], matind=[0 1 0 0 1], "
      "matval=[1 1 2 1 2], lower=[0 0 0 0], upper=[1e+20 1e+20 1e+20 1e+20], ranges=null";
  ASSERT_THAT(scripted_lp::calls_of("copylp"), SizeIs(2));
  EXPECT_THAT(scripted_lp::calls_of("copylp")[0], HasSubstr(lp));
}

TEST_F(FinalSelectionOfTwoPeriods, GivesAWidthThatThePeriodDoesNotWantTheRightHandSideZero) {
  select(mill_);
  ASSERT_THAT(scripted_lp::calls_of("copylp"), SizeIs(2));
  EXPECT_THAT(scripted_lp::calls_of("copylp")[1], HasSubstr("rhs=[3 0]"));
}

TEST_F(FinalSelectionOfTwoPeriods, FreesEveryProblemAndClosesOnceAtTheEnd) {
  select(mill_);
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

TEST_F(FinalSelectionOfTwoPeriods, StoresActivityReducedCostAndAZeroForEveryPeriod) {
  scripted_lp::set_script(
      "getx:1=[1,2,3,4];getdj:1=[-1,-2,-3,-4];getx:2=[5,0,0,6];getdj:2=[0,7,8,0]");
  select(mill_);
  EXPECT_EQ(dump(sets_),
            "Fine 100:\n"
            "45 30 trim 25 x [1 5] cost [-1 0] in [0 0]\n"
            "45 45 trim 10 x [2 0] cost [-2 7] in [0 0]\n"
            "Fine 80:\n"
            "45 trim 35 x [3 0] cost [-3 8] in [0 0]\n"
            "30 30 trim 20 x [4 6] cost [-4 0] in [0 0]\n");
  EXPECT_EQ(log_.str(), "");
}

TEST_F(FinalSelectionOfTwoPeriods, KeepsTheSetsByReducedCostOfEveryPeriod) {
  scripted_lp::set_script("getdj:1=[-1,-2,-3,-4];getdj:2=[0,7,8,0]");
  select(mill_);
  const PatternCompPattern *set = sets_.ofGrade("Fine")[0];
  ASSERT_EQ(set->redCostSets.size(), 2);
  std::vector<double> firstWidths;
  for (const skipList<Pattern> *byCost : set->redCostSets) {
    forEachElement(*byCost,
                   [&](const Pattern &pattern) { firstWidths.push_back(pattern.widths.last()); });
  }
  // The first period puts 45 45 first, the second 45 30.
  EXPECT_THAT(firstWidths, ElementsAre(45, 30, 30, 45));
}

TEST_F(FinalSelectionOfTwoPeriods, LeavesZerosWhereTheSolutionCannotBeRead) {
  scripted_lp::set_script("getobjval:1+=9;getx:1+=9;getdj:1+=9");
  select(mill_);
  EXPECT_EQ(dump(*sets_.ofGrade("Fine")[1]),
            "Fine 80:\n"
            "45 trim 35 x [0 0] cost [0 0] in [0 0]\n"
            "30 30 trim 20 x [0 0] cost [0 0] in [0 0]\n");
}

TEST_F(FinalSelectionOfTwoPeriods, NamesGradeAndPeriodOfAFailedSolve) {
  scripted_lp::set_script("primopt:2=12;getstat:2=5");
  support::expectRunEnds([this](std::ostream &log) { selectInto(mill_, log); },
                         "Error: No solution to lp, status : 12\nGrade : Fine\nPeriod : 2\n"
                         "Error: Solution not optimal, status : 5");
}

TEST_F(FinalSelectionOfTwoPeriods, EndsTheRunWhenAProblemIsNotFreed) {
  scripted_lp::set_script("freeprob:2=1");
  support::expectRunEnds([this](std::ostream &log) { selectInto(mill_, log); },
                         "Error: LP did not unload successfully.");
}

TEST_F(FinalSelectionOfTwoPeriods, TakesItsArraysInOrder) {
  const char *parts[] = {"objective function coefficients",
                         "senses",
                         "constraint matrix",
                         "constraint matrix",
                         "constraint matrix",
                         "constraint matrix",
                         "lower bounds",
                         "upper bounds",
                         "right hand side",
                         "x values",
                         "reduced costs"};
  int n = 0;
  for (const char *part : parts) {
    ++n;
    const auto step = [&](std::ostream &log) {
      const support::RefusedArray refused(n);
      selectInto(mill_, log);
    };
    support::expectRunEnds(step, std::string("Error: Could not allocate memory for ") + part + ".");
  }
}

TEST_F(FinalSelection, OfEveryGradeTakesItsOwnRowsAndColumns) {
  Mill mill("N,W,Fine,100,1,1,1\nN,W,Board,90,1,1,1\n", "1,Fine,60,3,Acme\n1,Board,50,1,Acme\n");
  addPattern(sets_.add("Board", 90), {50});
  addPattern(sets_.add("Fine", 100), {60});
  select(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"), ElementsAre(HasSubstr("objective=[90], rhs=[1]"),
                                                           HasSubstr("objective=[100], rhs=[3]")));
  EXPECT_THAT(scripted_lp::calls_of("open"), SizeIs(1));
}

TEST_F(FinalSelection, TakesTheFirstOfTwoEntriesOfAWidth) {
  // A repeated order gives the entries (60, 3) and (60, 7).
  Mill mill("N,W,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n1,Fine,60,4,Acme\n");
  addPattern(sets_.add("Fine", 100), {60});
  select(mill);
  EXPECT_THAT(scripted_lp::calls_of("copylp"), ElementsAre(HasSubstr("rhs=[3]")));
}

TEST_F(FinalSelection, WithoutOrdersOpensAndClosesOneEnvironment) {
  Mill mill("N,W,Fine,100,1,1,1\n", "");
  select(mill);
  EXPECT_THAT(scripted_lp::calls(),
              ElementsAre(HasSubstr("CPXopenCPLEXruntime"), HasSubstr("CPXcloseCPLEX")));
}

TEST_F(FinalSelectionOfTwoPeriods, ShowsGradePeriodAndPatternsOnATerminal) {
  const support::Terminal terminal;
  if (terminal.file() < 0) {
    GTEST_SKIP() << "no terminal can be made here";
  }
  const support::StreamCapture errors(std::cerr);
  const support::StandardErrorOn redirected(terminal.file());
  ProgressLine progress;
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  selectPatterns(mill_.data().grades, mill_.data().periods, mill_.data().demand, settings_, sets_,
                 progress, log_);
  EXPECT_THAT(errors.text(),
              testing::StartsWith("\rfinal selection, grade Fine, period 1, patterns 4, "));
}

TEST_F(FinalSelection, ChoosesTheBarrierMethodBySetting) {
  settings_.barrier = true;
  Mill mill("N,W,Fine,100,1,1,1\n", "1,Fine,60,3,Acme\n");
  addPattern(sets_.add("Fine", 100), {60});
  select(mill);
  EXPECT_THAT(scripted_lp::calls_of("hybbaropt"), ElementsAre(HasSubstr("method=112")));
  EXPECT_THAT(scripted_lp::calls_of("primopt"), IsEmpty());
}

TEST(ConsistencyOfTheFinalSelection, HoldsWhereTheCountsAgree) {
  std::ostringstream log;
  requireEqualCounts(7, 7, "no", log);
  EXPECT_EQ(log.str(), "");
}

TEST(ConsistencyOfTheFinalSelection, EndsTheRunWhereTheyDoNot) {
  const char *words = "Error: Something wrong with coefficient matrix.";
  support::expectRunEnds([&](std::ostream &log) { requireEqualCounts(7, 8, words, log); }, words);
}

}  // namespace
}  // namespace corvane
