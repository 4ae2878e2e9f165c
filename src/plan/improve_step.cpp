#include "plan/improve_step.h"

#include <algorithm>
#include <fstream>

#include "core/files.h"
#include "core/numbers.h"
#include "plan/mill_names.h"

namespace corvane::plan {

namespace {

// Reels below this are what a solver's tolerances leave of 0.
constexpr double kUsed = 1e-9;
// Rolls.
constexpr double kRollsWorthTelling = 0.05;

int mostRolls(const PlanProblem &problem) {
  double most = 1;
  for (const Pattern &pattern : problem.patterns) {
    double rolls = 0;
    for (const Yield &yield : pattern.yields) {
      rolls += yield.rolls;
    }
    most = std::max(most, rolls);
  }
  return static_cast<int>(most);
}

std::string lineOf(const ImproveReport &report) {
  return "Improving: round " + std::to_string(report.rounds) + ", " +
         std::to_string(report.patterns) + " patterns" +
         (report.unmet < kRollsWorthTelling ? "" : ", " + fixed(report.unmet, 0) + " rolls unmet") +
         ", cost " + fixed(report.cost, 0);
}

// "leave fewer than 4.0 rolls unmet, nor bring the cost below 90, 10 % less".
std::string boundsOf(const ImproveReport &report) {
  const double bound = std::max(report.costBound, 0.0);
  const std::string cost =
      "bring " + std::string(report.unmet < kRollsWorthTelling ? "it" : "the cost") + " below " +
      fixed(bound, 0) + ", " + general(100 * (1 - bound / report.cost)) + " % less";
  return report.unmet < kRollsWorthTelling
             ? cost
             : "leave fewer than " + fixed(std::max(report.unmetBound, 0.0), 1) +
                   " rolls unmet, nor " + cost;
}

}  // namespace

int rollsInPattern(const std::optional<RunParameters> &mill, const PlanProblem &problem) {
  return mill ? static_cast<int>(mill->maximumWidthsInPattern) : mostRolls(problem);
}

ImproveStep::ImproveStep(const std::optional<RunParameters> &mill, Network &network,
                         PlanProblem &problem)
    : mill_(mill), network_(network), problem_(problem), limit_(rollsInPattern(mill, problem)) {}

void ImproveStep::run(double seconds, const std::function<double()> &clock,
                      ProgressLine &progress) {
  progress.show([] { return std::string("Improving: solving with the patterns of the file"); });
  std::vector<CutterMenu> menus = cutterMenus(network_, problem_);
  if (mill_) {
    MillNames(MillInputs(*mill_)).makeExact(menus, problem_);
  }
  improvement_ = improvePatterns(
      network_, problem_, menus, {limit_, seconds, clock},
      [&](const ImproveReport &report) { progress.show([&] { return lineOf(report); }); });
}

std::string ImproveStep::summary() const {
  const ImproveReport &report = improvement_->report;
  const std::string fewer =
      report.firstUnmet - report.unmet < kRollsWorthTelling
          ? ""
          : "rolls unmet " + fixed(report.firstUnmet, 1) + " to " + fixed(report.unmet, 1) + ", ";
  const std::string gain = std::to_string(report.patterns) + " patterns in " +
                           std::to_string(report.rounds) + " rounds: " + fewer + "cost " +
                           fixed(report.firstCost, 0) + " to " + fixed(report.cost, 0);
  const std::string all = " of at most " + std::to_string(limit_) + " rolls";
  return report.isComplete
             ? gain + "; no pattern" + all + " on these deckles can make the plan cheaper"
             : gain + (report.isTimeUp ? ", ended by time" : ", ended by rounding") +
                   "; no patterns" + all + " can " + boundsOf(report);
}

bool ImproveStep::writeModel(const std::vector<double> &reels, const std::string &file) const {
  const std::size_t periods = problem_.periodCount();
  std::vector<bool> isKept(problem_.patterns.size());
  for (std::size_t pattern = 0; pattern < isKept.size(); ++pattern) {
    const auto first = reels.begin() + static_cast<std::ptrdiff_t>(pattern * periods);
    isKept[pattern] = !problem_.patterns[pattern].offered ||
                      std::any_of(first, first + static_cast<std::ptrdiff_t>(periods),
                                  [](double count) { return count > kUsed; });
  }
  const MillInputs inputs(*mill_);
  std::ofstream stream;
  if (!openForWriting(stream, file, std::ios::trunc)) {
    return false;
  }
  writeImprovedModel(inputs, MillNames(inputs).slitPatterns(problem_, isKept), stream);
  stream.close();
  return !stream.fail();
}

}  // namespace corvane::plan
