// What else would pay, on mills that can be solved by hand.

#include "plan/advice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "network/network_reader.h"
#include "plan/mill_text.h"
#include "plan/plan_record.h"
#include "plan/plan_run.h"
#include "plan/two_steps.h"

namespace corvane::plan {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

constexpr int kRollsInPattern = 2;

struct Told {
  std::vector<std::string> days;
  std::vector<std::string> whatIfs;
  std::vector<std::string> patterns;
  std::string delays;         // the warning of them
  std::string unknownDelays;  // where nothing else was solved
};

std::vector<std::string> textsOf(const std::vector<Advice> &advice) {
  std::vector<std::string> texts;
  for (const Advice &one : advice) {
    texts.push_back(one.kind + ": " + one.text);
  }
  return texts;
}

std::string textOf(const std::optional<network::Warning> &warning) {
  return warning ? warning->kind + ": " + warning->text : "";
}

Told toldOf(const TestMill &mill, const ProblemOptions &options = {}) {
  const Network network = network::readNetworkText(importText(mill));
  const PlanProblem problem = makeProblem(network, options);
  const CompactLp lp(problem);
  LinearSolver solver(lp.model());
  TwoSteps steps(problem, lp, solver, {});
  const LinearSolution solution = steps.solve();
  EXPECT_EQ(solution.status, Status::kOptimal);
  const Totals totals = sumUp(network, problem, readPlan(problem, lp, solution.primal));
  const LinearOptimum optimum{network, problem, lp, solution, steps.unmetDual(), totals};
  const WhatIfs whatIfs = solveWhatIfs(optimum, 0.0);
  return {textsOf(adviseDays(optimum)), textsOf(adviseWhatIfs(optimum, whatIfs)),
          textsOf(advisePatterns(optimum, kRollsInPattern)), textOf(warnOfDelays(optimum, whatIfs)),
          textOf(warnOfDelays(optimum, {}))};
}

// C can make 140 rolls of 50 a period, at 5 of freight a roll.
TestMill oneMill(int rolls) {
  TestMill mill = smallMill();
  mill.cutters[0].patterns = {{50, 50}};
  mill.orders = {{"G", "A", 50.0, 0, rolls}};
  return mill;
}

// As above, and as many from D at 25 a roll.
TestMill twoMills(int rolls) {
  TestMill mill = oneMill(rolls);
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.rates.push_back({"South", "A", "Truck", 25.0, 0.0});
  return mill;
}

TEST(Advice, NothingIsToldWhereNothingPays) {
  TestMill mill = oneMill(20);
  mill.periods = {"1", "2"};
  const Told told = toldOf(mill);
  EXPECT_THAT(told.days, IsEmpty());
  EXPECT_THAT(told.whatIfs, IsEmpty());
  EXPECT_THAT(told.patterns, IsEmpty());
}

// A day of C makes 20 rolls, and each comes 20 cheaper than from D.
TEST(Advice, ADayOfAFullMachineSavesItsDualValue) {
  const Told told = toldOf(twoMills(200));
  EXPECT_THAT(told.days, ElementsAre("machine-day: a day more of M_C in 1 saves up to 400"));
  EXPECT_THAT(told.patterns, IsEmpty());
}

TEST(Advice, ADayDeliversWhatItMakes) {
  EXPECT_THAT(toldOf(oneMill(200)).days,
              ElementsAre("machine-day: a day more of M_C in 1 delivers up to 20 rolls "
                          "more; of what is short it makes G_A_50.000 in 1"));
}

TEST(Advice, ADayDeliversNoMoreThanIsShort) {
  EXPECT_THAT(toldOf(oneMill(147)).days,
              ElementsAre(HasSubstr("a day more of M_C in 1 delivers up to 7 rolls more")));
}

// With the cutters' capacities a day is worth 20, 40, 60 and 80 rolls.
TEST(Advice, TheBestThreeDaysAreTold) {
  TestMill mill = smallMill();
  mill.cutters.clear();
  mill.rates.clear();
  mill.orders.clear();
  for (int i = 1; i <= 4; ++i) {
    const std::string number = std::to_string(i);
    mill.cutters.push_back(
        {"Mill" + number, "C" + number, "G" + number, 100.0, 10.0 * i, 2.0, {{50, 50}}});
    mill.rates.push_back({"Mill" + number, "A", "Truck", 5.0, 0.0});
    mill.orders.push_back({"G" + number, "A", 50.0, 0, 1000});
  }
  EXPECT_THAT(
      toldOf(mill).days,
      ElementsAre(HasSubstr("of M_C4 in 1 delivers up to 80 rolls more; of what is short it makes "
                            "G4_A_50.000 in 1"),
                  HasSubstr("of M_C3 in 1 delivers up to 60 rolls more; of what is short it makes "
                            "G3_A_50.000 in 1"),
                  HasSubstr("of M_C2 in 1 delivers up to 40 rolls more; of what is short it makes "
                            "G2_A_50.000 in 1")));
}

// Of three orders that are short the two of which most is short, and none of another period.
TEST(Advice, ADayNamesTheLargestOrdersThatItCouldMake) {
  TestMill mill = oneMill(200);
  mill.periods = {"1", "2"};
  mill.orders = {{"G", "A", 50.0, 0, 500},
                 {"G", "B", 50.0, 0, 600},
                 {"G", "D", 50.0, 0, 700},
                 {"G", "A", 50.0, 1, 900}};
  mill.rates = {{"North", "A", "Truck", 5.0, 0.0},
                {"North", "B", "Truck", 6.0, 0.0},
                {"North", "D", "Truck", 7.0, 0.0}};
  EXPECT_THAT(
      toldOf(mill).days,
      UnorderedElementsAre(HasSubstr("in 1 delivers up to 20 rolls more; of what is short it makes "
                                     "G_D_50.000 in 1 and G_B_50.000 in 1"),
                           HasSubstr("in 2 delivers up to 20 rolls more; of what is short it makes "
                                     "G_A_50.000 in 2")));
}

// 60 of the 200 rolls can be made by C in the first period, 20 cheaper: 1,200 of 3,200.
TEST(Advice, StockSavesAKnownAmount) {
  TestMill mill = twoMills(200);
  mill.periods = {"1", "2"};
  mill.orders[0].period = 1;
  EXPECT_THAT(toldOf(mill).whatIfs,
              ElementsAre("stock: stock at the cutters (--storage inf) saves 1,200, 37.50 %"));
  EXPECT_THAT(toldOf(mill, {.freeStock = true}).whatIfs, IsEmpty());
}

TEST(Advice, StockDeliversMore) {
  TestMill mill = oneMill(200);
  mill.periods = {"1", "2"};
  mill.orders[0].period = 1;
  EXPECT_THAT(toldOf(mill).whatIfs,
              ElementsAre("stock: stock at the cutters (--storage inf) delivers 60 rolls more, at "
                          "a cost of 2,000 instead of 1,400"));
}

// South takes a period, and its line is the later one: by the file nothing of C comes in time.
TEST(Advice, EachMillsOwnTransitTimeDeliversMore) {
  TestMill mill = twoMills(20);
  mill.rates[1].delay = 1.0;
  EXPECT_THAT(toldOf(mill).whatIfs,
              ElementsAre("delays-by-mill: each mill's own transit time (--delays by-mill) "
                          "delivers 20 rolls more, at a cost of 200 instead of 0"));
}

// Here the later line is the quicker one: with its own transit time C would deliver nothing, which
// costs less.
TEST(Advice, AWhatIfThatDeliversLessIsNotTold) {
  TestMill mill = twoMills(300);
  mill.rates[0].delay = 1.0;
  EXPECT_THAT(toldOf(mill).whatIfs, IsEmpty());
}

// As where the other mill delivers the 20 rolls by the file, and C its own in time.
TEST(Advice, TheWarningOfDelaysTellsWhatTheyCost) {
  TestMill mill = twoMills(20);
  mill.rates[1].delay = 1.0;
  const Told told = toldOf(mill);
  EXPECT_EQ(told.delays,
            "delay-differs: mills differ in transit time, and the file has one for all: with each "
            "mill's own (--delays by-mill) 0 rolls would stay unmet instead of 20, at a cost of "
            "200 instead of 0");
  EXPECT_THAT(told.unknownDelays, HasSubstr("for all: --delays by-mill tells what"));
  const Told byMill = toldOf(mill, {.delaysByMill = true});
  EXPECT_EQ(byMill.delays, "");
  EXPECT_EQ(byMill.unknownDelays, "");
}

// By the file C delivers in time; in truth only D does, 160 rolls fewer.
TEST(Advice, TheWarningOfDelaysTellsWhatThePlanPromisesTooMuch) {
  TestMill mill = twoMills(300);
  mill.rates[0].delay = 1.0;
  EXPECT_THAT(toldOf(mill).delays,
              HasSubstr("(--delays by-mill) 160 rolls would stay unmet instead of 20, "));
}

// Whoever needs two weeks can take them: in the second period all comes from C, at its rate.
TEST(Advice, TheWarningOfDelaysSaysWhereTheyCostNothing) {
  TestMill mill = twoMills(20);
  mill.periods = {"1", "2"};
  mill.orders[0].period = 1;
  mill.rates[1].delay = 1.0;
  EXPECT_THAT(toldOf(mill).delays, HasSubstr("the plan would be no other"));
}

TEST(Advice, NoDelaysAreWarnedOfWhereMillsAgree) {
  EXPECT_EQ(toldOf(twoMills(20)).delays, "");
  EXPECT_EQ(toldOf(twoMills(20)).unknownDelays, "");
}

// A roll costs a reel with 50 inches of waste, 110; a reel of two costs 10 and saves 220.
TEST(Advice, ABetterPatternIsTold) {
  TestMill mill = oneMill(20);
  mill.cutters[0].patterns = {{50}};
  EXPECT_THAT(toldOf(mill).patterns,
              ElementsAre(HasSubstr("a better pattern of G_C_100 would save up to 210 a reel")));
}

TEST(Advice, APatternThatDeliversMoreIsTold) {
  TestMill mill = oneMill(200);
  mill.cutters[0].patterns = {{50}};
  EXPECT_THAT(
      toldOf(mill).patterns,
      ElementsAre(HasSubstr("a better pattern of G_C_100 would deliver up to 1 rolls more")));
}

PlanRequest quiet() {
  PlanRequest request;
  request.quiet = true;
  return request;
}

PlanRequest beside(int rows) {
  PlanRequest request;
  request.mostAdviceRows = rows;
  return request;
}

class AdviceRun : public testing::Test {
 protected:
  std::string run(PlanRequest request) {
    TestMill mill = oneMill(200);
    mill.cutters[0].patterns = {{50}, {50, 50}};
    mill.periods = {"1", "2"};
    mill.orders[0].period = 1;
    return run(mill, std::move(request));
  }

  std::string run(const TestMill &mill, PlanRequest request) {
    request.importFile = folder_.filePath("CV.imp").toStdString();
    request.outputFolder = folder_.filePath("plan").toStdString();
    std::ofstream(request.importFile, std::ios::binary) << importText(mill);
    out_.str("");
    err_.str("");
    EXPECT_EQ(runPlan(request, out_, err_), 0) << err_.str();
    std::ostringstream json;
    json << std::ifstream(request.outputFolder + "/plan.json", std::ios::binary).rdbuf();
    return json.str();
  }

  QTemporaryDir folder_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(AdviceRun, EndsThePlanOnTheScreenAndIsInTheRecord) {
  const std::string json = run(PlanRequest{});
  EXPECT_THAT(
      out_.str(),
      HasSubstr(
          "  Would pay  a day more of M_C in 2 delivers up to 20 rolls "
          "more; of what is short it makes G_A_50.000 in 2\n             stock at the cutters"));
  EXPECT_THAT(json, HasSubstr(R"({"kind": "machine-day", "text": "a day more of M_C in 2)"));
  EXPECT_THAT(json, HasSubstr(R"({"kind": "stock", "text": "stock at the cutters)"));
}

TEST_F(AdviceRun, QuietSolvesNoWhatIfs) {
  const std::string json = run(quiet());
  EXPECT_THAT(json, HasSubstr("machine-day"));
  EXPECT_THAT(json, Not(HasSubstr(R"("kind": "stock")")));
}

// Two machine rows, two of the store and one of the order.
TEST_F(AdviceRun, NothingElseIsSolvedBesideAProgrammeOfMoreRows) {
  constexpr int kRows = 5;
  EXPECT_THAT(run(beside(kRows)), HasSubstr(R"("kind": "stock")"));
  const std::string json = run(beside(kRows - 1));
  EXPECT_THAT(json, HasSubstr("machine-day"));
  EXPECT_THAT(json, Not(HasSubstr(R"("kind": "stock")")));
  EXPECT_THAT(json, Not(HasSubstr(R"("kind": "patterns")")));
}

TEST_F(AdviceRun, WhatDelaysCostIsTheFirstWarning) {
  TestMill mill = twoMills(20);
  mill.rates[1].delay = 1.0;
  EXPECT_THAT(run(mill, {}), HasSubstr("0 rolls would stay unmet instead of 20"));
  EXPECT_THAT(err_.str(), StartsWith("Warning: mills differ in transit time, and the file has one "
                                     "for all: with each mill's own"));
  run(mill, beside(0));
  EXPECT_THAT(err_.str(), StartsWith("Warning: mills differ in transit time, and the file has one "
                                     "for all: --delays by-mill tells"));
}

// 70 reels of a week, of one roll each before and of two then.
TEST_F(AdviceRun, ImprovingTellsOfTheRollsThatItDelivers) {
  TestMill mill = oneMill(200);
  mill.cutters[0].patterns = {{50}, {30, 30}};
  mill.orders.push_back({"G", "A", 30.0, 0, 1});
  PlanRequest request;
  request.improve = true;
  run(mill, request);
  EXPECT_THAT(out_.str(), HasSubstr("rounds: rolls unmet 130.5 to 61.0, cost "));
}

}  // namespace
}  // namespace corvane::plan
