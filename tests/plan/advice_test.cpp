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

constexpr int kRollsInPattern = 2;

struct Told {
  std::vector<std::string> days;
  std::vector<std::string> whatIfs;
  std::vector<std::string> patterns;
};

std::vector<std::string> textsOf(const std::vector<Advice> &advice) {
  std::vector<std::string> texts;
  for (const Advice &one : advice) {
    texts.push_back(one.kind + ": " + one.text);
  }
  return texts;
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
  return {textsOf(adviseDays(optimum)), textsOf(adviseWhatIfs(optimum, 0.0)),
          textsOf(advisePatterns(optimum, kRollsInPattern))};
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
              ElementsAre("machine-day: a day more of M_C in 1 delivers up to 20 rolls more"));
}

TEST(Advice, ADayDeliversNoMoreThanIsShort) {
  EXPECT_THAT(toldOf(oneMill(147)).days,
              ElementsAre("machine-day: a day more of M_C in 1 delivers up to 7 rolls more"));
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
  EXPECT_THAT(toldOf(mill).days,
              ElementsAre("machine-day: a day more of M_C4 in 1 delivers up to 80 rolls more",
                          "machine-day: a day more of M_C3 in 1 delivers up to 60 rolls more",
                          "machine-day: a day more of M_C2 in 1 delivers up to 40 rolls more"));
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

class AdviceRun : public testing::Test {
 protected:
  std::string run(bool quiet, bool improve) {
    TestMill mill = oneMill(200);
    mill.cutters[0].patterns = {{50}, {50, 50}};
    mill.periods = {"1", "2"};
    mill.orders[0].period = 1;
    PlanRequest request;
    request.importFile = folder_.filePath("CV.imp").toStdString();
    request.outputFolder = folder_.filePath("plan").toStdString();
    request.quiet = quiet;
    request.improve = improve;
    std::ofstream(request.importFile, std::ios::binary) << importText(mill);
    out_.str("");
    std::ostringstream err;
    EXPECT_EQ(runPlan(request, out_, err), 0) << err.str();
    std::ostringstream json;
    json << std::ifstream(request.outputFolder + "/plan.json", std::ios::binary).rdbuf();
    return json.str();
  }

  QTemporaryDir folder_;
  std::ostringstream out_;
};

TEST_F(AdviceRun, EndsThePlanOnTheScreenAndIsInTheRecord) {
  const std::string json = run(false, false);
  EXPECT_THAT(out_.str(), HasSubstr("  Would pay  a day more of M_C in 2 delivers up to 20 rolls "
                                    "more\n             stock at the cutters"));
  EXPECT_THAT(json, HasSubstr(R"({"kind": "machine-day", "text": "a day more of M_C in 2)"));
  EXPECT_THAT(json, HasSubstr(R"({"kind": "stock", "text": "stock at the cutters)"));
}

TEST_F(AdviceRun, QuietSolvesNoWhatIfs) {
  const std::string json = run(true, false);
  EXPECT_THAT(json, HasSubstr("machine-day"));
  EXPECT_THAT(json, Not(HasSubstr(R"("kind": "stock")")));
}

}  // namespace
}  // namespace corvane::plan
