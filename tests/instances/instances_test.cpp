// Public cases whose best answers are known, each run through the whole program as a mill with one
// grade, one cutter, one period and every width once.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <numeric>
#include <ostream>
#include <string>
#include <vector>

#include "core/skip_list_cursor.h"
#include "import_checker.h"
#include "network/network_reader.h"
#include "plan/pattern_improver.h"
#include "plan/two_steps.h"
#include "program_run.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr double kTolerance = 1e-6;
constexpr double kWithin = 0.005;

struct Case {
  const char *name;
  int maximumWidths;
  double bound;  // deckles; the exact optimum over all patterns, to nine decimals
};

void PrintTo(const Case &instance, std::ostream *out) {
  *out << instance.name;
}

struct Demand {
  double width;
  int rolls;
};

struct Mill {
  double deckle = 0.0;
  std::vector<Demand> demands;
};

Mill readCase(const std::string &name) {
  std::ifstream file(fs::path(CORVANE_CASES_DIR) / (name + ".txt"));
  Mill mill;
  file >> mill.deckle;
  for (Demand demand{}; file >> demand.width >> demand.rolls;) {
    mill.demands.push_back(demand);
  }
  return mill;
}

void writeData(const fs::path &folder, const Mill &mill, int maximumWidths) {
  fs::create_directories(folder);
  std::ofstream(folder / "Parameters.data") << "maximum widths in pattern=" << maximumWidths
                                            << "\nnew patterns per iteration=1000\n"
                                               "stop generating threshold=10000\n"
                                               "rand num gen seed=1\n";
  std::ofstream(folder / "machines.data") << "Mill,Cutter,Grade," << mill.deckle << ",1000,1,1\n";
  std::ofstream(folder / "freightRates.data") << "Customer,Mill,Truck,1,0\n";
  std::ofstream orders(folder / "orders.data");
  for (const Demand &demand : mill.demands) {
    orders << "1,Grade," << demand.width << ',' << demand.rolls << ",Customer\n";
  }
}

// What the patterns of a run use and make in the one period.
struct Plan {
  double paper = 0.0;
  std::map<double, double> rolls;  // by width
};

void expectCuttable(const Pattern &pattern, double deckle, int maximumWidths) {
  const double used = std::accumulate(pattern.widths.begin(), pattern.widths.end(), 0.0);
  EXPECT_LE(used, deckle + kTolerance);
  EXPECT_LE(pattern.widths.size(), maximumWidths);
}

void addPattern(const Pattern &pattern, double deckle, Plan &plan) {
  ASSERT_EQ(pattern.xValues.size(), 1);
  const double runs = pattern.xValues.at(0);
  EXPECT_GE(runs, 0.0);
  plan.paper += runs * deckle;
  for (const double width : pattern.widths) {
    plan.rolls[width] += runs;
  }
}

// Every pattern with an activity enters the model, so those that do hold the whole objective.
Plan planOf(const PatternSets &sets, int maximumWidths) {
  Plan plan;
  for (const PatternCompPattern *set : sets.all) {
    forEachElement(*set->patterns, [&](const Pattern &pattern) {
      expectCuttable(pattern, set->deckleWidth, maximumWidths);
      addPattern(pattern, set->deckleWidth, plan);
    });
  }
  return plan;
}

std::string nameOfCase(const testing::TestParamInfo<Case> &instance) {
  return std::string(instance.param.name) + "_" + std::to_string(instance.param.maximumWidths);
}

class PublicCase : public testing::TestWithParam<Case> {
 protected:
  void SetUp() override {
    const Case &instance = GetParam();
    mill_ = readCase(instance.name);
    ASSERT_FALSE(mill_.demands.empty());
    const fs::path folder = freshFolder(nameOfCase({instance, 0}));
    writeData(folder / "data", mill_, instance.maximumWidths);
    PlanningComparators comparators;
    RunRecord record(comparators);
    outcome_ = runProgram(folder, record);
    plan_ = planOf(record.patterns, instance.maximumWidths);
  }

  Mill mill_;
  Plan plan_;
  RunOutcome outcome_;
};

void expectCovered(const Mill &mill, const Plan &plan) {
  for (const Demand &demand : mill.demands) {
    const auto made = plan.rolls.find(demand.width);
    ASSERT_NE(made, plan.rolls.end()) << demand.width;
    EXPECT_GE(made->second, demand.rolls - kTolerance) << demand.width;
  }
}

TEST_P(PublicCase, ComesCloseToTheExactLinearBound) {
  expectCovered(mill_, plan_);
  const double deckles = plan_.paper / mill_.deckle;
  std::cout << std::setprecision(11) << "deckles: " << deckles << ", bound: " << GetParam().bound
            << '\n';
  EXPECT_GE(deckles, GetParam().bound - kTolerance);
  EXPECT_LE(deckles, GetParam().bound * (1.0 + kWithin));
  const auto complaints =
      import_checker::checkImport(outcome_.importFile, {.periods = 1, .freightComplete = true});
  EXPECT_EQ(import_checker::describe(complaints), "");
  EXPECT_EQ(outcome_.output, "");
}

// Of the plan of least cost that delivers all.
double reelsOf(const plan::PlanProblem &problem) {
  const plan::CompactLp lp(problem);
  plan::LinearSolver solver(lp.model());
  plan::TwoSteps steps(problem, lp, solver, {});
  const plan::LinearSolution solution = steps.solve();
  EXPECT_EQ(solution.status, plan::Status::kOptimal);
  EXPECT_EQ(steps.leastUnmet(), 0.0);
  double reels = 0.0;
  for (int column = 0; column < lp.model().columns(); ++column) {
    if (lp.column(column).kind == plan::ColumnKind::kReels) {
      reels += solution.primal[static_cast<std::size_t>(column)];
    }
  }
  return reels;
}

// With one deckle the plan of least cost is that of least paper.
TEST_P(PublicCase, IsPlannedCloseToTheBoundAndAtItWithBetterPatterns) {
  const double bound = GetParam().bound;
  plan::Network network = network::readNetworkText(outcome_.importFile);
  plan::PlanProblem problem = plan::makeProblem(network, {});
  const double reels = reelsOf(problem);
  EXPECT_GE(reels, bound - kTolerance);
  EXPECT_LE(reels, bound * (1.0 + kWithin));
  const plan::ImproveReport report =
      plan::improvePatterns(network, problem, {}, {.limit = GetParam().maximumWidths},
                            [](const plan::ImproveReport &) {})
          .report;
  EXPECT_TRUE(report.isComplete);
  EXPECT_NEAR(reelsOf(problem), bound, kTolerance);
  std::cout << std::setprecision(11) << "reels: " << reels << ", improved: " << reelsOf(problem)
            << " with " << report.patterns << " patterns in " << report.rounds << " rounds\n";
}

INSTANTIATE_TEST_SUITE_P(
    Instances, PublicCase,
    testing::Values(Case{"wiki5600", 5, 72.916666667}, Case{"wiki5600", 10, 72.916666667},
                    Case{"esicup_pr087", 5, 246.997687861}, Case{"esicup_pr087", 10, 246.997687861},
                    Case{"esicup_pr112", 5, 301.998721228}, Case{"esicup_pr112", 10, 301.998721228},
                    Case{"roll6300_e3", 5, 44.825396825}, Case{"roll6300_e3", 10, 44.825396825}),
    nameOfCase);

}  // namespace

}  // namespace corvane
