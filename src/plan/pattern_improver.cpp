#include "plan/pattern_improver.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "plan/compact_lp.h"
#include "plan/linear_solver.h"
#include "plan/network_pricing.h"
#include "plan/pattern_pricing.h"

namespace corvane::plan {

namespace {

// Unmet demand below this is none, rolls.
constexpr double kNoUnmet = 1e-6;
// What the bound may leave open of a cost, relative, once no pattern improves.
constexpr double kOpen = 1e-6;

// A pattern by its cutter and what it puts into which store.
using PatternKey = std::pair<Index, std::map<Index, double>>;

PatternKey keyOf(const NewPattern &pattern) {
  PatternKey key{pattern.cutter, {}};
  for (const NewPattern::Rolls &rolls : pattern.rolls) {
    key.second[rolls.store] += rolls.count;
  }
  return key;
}

PatternKey keyOf(const Pattern &pattern) {
  PatternKey key{pattern.cutter, {}};
  for (const Yield &yield : pattern.yields) {
    key.second[yield.stores.front()] += yield.rolls;
  }
  return key;
}

class Improver {
 public:
  Improver(Network &network, PlanProblem &problem, std::vector<CutterMenu> menus,
           const ImproveOptions &options, const ImproveProgress &progress)
      : network_(network),
        problem_(problem),
        menus_(std::move(menus)),
        options_(options),
        progress_(progress),
        lp_(problem),
        solver_(lp_.model()) {
    for (const Pattern &pattern : problem.patterns) {
      known_.insert(keyOf(pattern));
    }
  }

  ImproveReport run() {
    startUnmetStep();
    if (!generate()) {
      return report_;
    }
    startCostStep();
    report_.isComplete = generate();
    return report_;
  }

 private:
  void startUnmetStep() {
    step_ = PlanStep::kUnmet;
    for (int column = 0; column < lp_.model().columns(); ++column) {
      solver_.setCost(column, 0);
    }
    for (const int column : lp_.unmetColumns()) {
      solver_.setCost(column, lp_.unmetWeight(problem_, column));
    }
  }

  // Unmet demand stays at its least from now on.
  void startCostStep() {
    step_ = PlanStep::kCost;
    for (int column = 0; column < lp_.model().columns(); ++column) {
      solver_.setCost(column, lp_.model().cost[static_cast<std::size_t>(column)]);
    }
    if (report_.unmet <= kNoUnmet) {
      for (const int column : lp_.unmetColumns()) {
        solver_.setColumnBounds(column, 0, 0);
      }
      return;
    }
    std::vector<double> weights;
    for (const int column : lp_.unmetColumns()) {
      weights.push_back(lp_.unmetWeight(problem_, column));
    }
    solver_.addRow(-kInfinite, report_.unmet * (1 + 1e-9), lp_.unmetColumns(), weights);
  }

  // Rounds of one step. False when time or the solver ended it.
  bool generate() {
    LinearSolution solution = solver_.solve(Method::kDual);
    while (true) {
      if (solution.status != Status::kOptimal) {
        return false;
      }
      const PricingRound round = price(solution);
      note(solution.objective, solution.objective - round.mostGain);
      const std::vector<NewPattern> patterns = newOnes(round);
      if (patterns.empty() || isClosed()) {
        return true;
      }
      if (options_.seconds > 0 && secondsSinceStart() > options_.seconds) {
        return false;
      }
      add(patterns);
      solution = solver_.solve(Method::kPrimal);
    }
  }

  PricingRound price(const LinearSolution &solution) {
    ++report_.rounds;
    if (step_ == PlanStep::kUnmet && solution.objective <= kNoUnmet) {
      return {};
    }
    return pricePatterns(network_, problem_, lp_, solution, menus_, options_.limit, step_);
  }

  void note(double objective, double bound) {
    const bool isCost = step_ == PlanStep::kCost;
    double &first = isCost ? report_.firstCost : report_.firstUnmet;
    first = std::isnan(first) ? objective : first;
    (isCost ? report_.cost : report_.unmet) = objective;
    double &best = isCost ? report_.costBound : report_.unmetBound;
    best = std::max(best, bound);
    progress_(report_);
  }

  // True when the bound has met the objective.
  bool isClosed() const {
    const bool isCost = step_ == PlanStep::kCost;
    const double value = isCost ? report_.cost : report_.unmet;
    const double bound = isCost ? report_.costBound : report_.unmetBound;
    return value - bound <= kOpen * 1e-3 * std::fabs(value);
  }

  // Those that are not there yet. Pricing knows trim to more digits than a file has, so it may go
  // on to ask for a pattern that costs a little more than it thinks.
  std::vector<NewPattern> newOnes(const PricingRound &round) {
    std::vector<NewPattern> patterns;
    for (const PricedPattern &priced : round.patterns) {
      if (known_.insert(keyOf(priced.pattern)).second) {
        patterns.push_back(priced.pattern);
      }
    }
    return patterns;
  }

  void add(const std::vector<NewPattern> &patterns) {
    const int before = lp_.model().columns();
    for (const NewPattern &pattern : patterns) {
      lp_.addPattern(problem_, addPattern(network_, problem_, pattern));
      ++report_.patterns;
    }
    solver_.addColumns(lp_.model(), before);
    for (int column = before; step_ == PlanStep::kUnmet && column < lp_.model().columns();
         ++column) {
      solver_.setCost(column, 0);
    }
  }

  double secondsSinceStart() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

  Network &network_;
  PlanProblem &problem_;
  std::vector<CutterMenu> menus_;
  ImproveOptions options_;
  const ImproveProgress &progress_;
  CompactLp lp_;
  LinearSolver solver_;
  std::set<PatternKey> known_;
  PlanStep step_ = PlanStep::kUnmet;
  ImproveReport report_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// As many rolls of one width as fit.
NewPattern plainPattern(const CutterMenu &menu, const MenuEntry &entry, int limit) {
  const double room = std::floor((menu.deckle + kFitTolerance) / entry.width);
  const double count = std::min(room, static_cast<double>(limit));
  return {menu.cutter, {{entry.store, count}}, writtenTrim(menu.deckle - count * entry.width)};
}

// The file's network says nothing of rolls that no pattern yields, and a plan leaves them out.
// Gives each width of each cutter a pattern; returns how many.
int fillEmptyStores(Network &network, PlanProblem &problem, const std::vector<CutterMenu> &menus,
                    int limit) {
  const std::size_t before = problem.patterns.size();
  for (const CutterMenu &menu : menus) {
    for (const MenuEntry &entry : menu.entries) {
      if (problem.stores[entry.store].patterns.empty() &&
          entry.width <= menu.deckle + kFitTolerance) {
        addPattern(network, problem, plainPattern(menu, entry, limit));
      }
    }
  }
  const auto added = static_cast<int>(problem.patterns.size() - before);
  if (added > 0) {
    const std::vector<Pattern> patterns = std::move(problem.patterns);
    problem = makeProblem(network, problem.options);
    for (std::size_t i = 0; i < patterns.size(); ++i) {
      problem.patterns[i].offered = patterns[i].offered;
    }
  }
  return added;
}

}  // namespace

ImproveReport improvePatterns(Network &network, PlanProblem &problem,
                              const std::vector<CutterMenu> &exactMenus,
                              const ImproveOptions &options, const ImproveProgress &progress) {
  const std::vector<CutterMenu> menus =
      exactMenus.empty() ? cutterMenus(network, problem) : exactMenus;
  const int added = fillEmptyStores(network, problem, menus, options.limit);
  ImproveReport report = Improver(network, problem, menus, options, progress).run();
  report.patterns += added;
  return report;
}

}  // namespace corvane::plan
