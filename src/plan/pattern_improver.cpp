#include "plan/pattern_improver.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
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
// Patterns of a cutter and period in a round.
constexpr int kDisjoint = 8;
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
    startSum();
    generate();
    startUnmetStep();
    if (!generate()) {
      return report_;
    }
    startCostStep();
    report_.isComplete = generate();
    return report_;
  }

 private:
  enum class Phase { kSum, kUnmet, kCost };

  void setCosts(double costs, double shortage) {
    for (int column = 0; column < lp_.model().columns(); ++column) {
      solver_.setCost(column, costs * lp_.model().cost[static_cast<std::size_t>(column)]);
    }
    for (const int column : lp_.unmetColumns()) {
      solver_.setCost(column, shortage * lp_.unmetWeight(problem_, column));
    }
  }

  // Patterns are sought for both at once, as one sum: of the least unmet demand and the least cost
  // alike it has nearly all.
  void startSum() {
    phase_ = Phase::kSum;
    setCosts(1.0, problem_.highestUndercost);
  }

  void startUnmetStep() {
    phase_ = Phase::kUnmet;
    bound_ = -kInfinite;
    report_.cost = std::numeric_limits<double>::quiet_NaN();
    setCosts(0.0, 1.0);
  }

  // Unmet demand stays at its least from now on.
  void startCostStep() {
    phase_ = Phase::kCost;
    bound_ = -kInfinite;
    setCosts(1.0, 0.0);
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

  // Rounds of one phase. False when time or the solver ended it.
  bool generate() {
    LinearSolution solution =
        phase_ == Phase::kSum ? solver_.solveAfresh() : solver_.solve(Method::kPrimal);
    while (true) {
      if (solution.status != Status::kOptimal) {
        return false;
      }
      const std::vector<NewPattern> patterns = price(solution);
      progress_(report_);
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

  PlanStep step() const { return phase_ == Phase::kUnmet ? PlanStep::kUnmet : PlanStep::kCost; }

  // The patterns of a round that are not there yet. Pricing knows trim to more digits than a file
  // has, so it may go on to ask for a pattern that costs a little more than it thinks.
  std::vector<NewPattern> price(const LinearSolution &solution) {
    ++report_.rounds;
    if (phase_ == Phase::kSum) {
      noteSum(solution);
    }
    PricingRound round;
    if (phase_ != Phase::kUnmet || solution.objective > kNoUnmet) {
      round = pricePatterns({network_, problem_, lp_, menus_, options_.limit}, solution.dual,
                            step(), kDisjoint);
    }
    note(solution.objective, solution.objective - round.mostGain);
    std::vector<NewPattern> patterns;
    for (const PricedPattern &priced : round.patterns) {
      if (!known_.contains(keyOf(priced.pattern))) {
        patterns.push_back(priced.pattern);
      }
    }
    return patterns;
  }

  // The two parts of the sum, which are not bounds of anything.
  void noteSum(const LinearSolution &solution) {
    report_.unmet = 0;
    for (const int column : lp_.unmetColumns()) {
      report_.unmet +=
          lp_.unmetWeight(problem_, column) * solution.primal[static_cast<std::size_t>(column)];
    }
    report_.cost = solution.objective - problem_.highestUndercost * report_.unmet;
    if (std::isnan(report_.firstCost)) {
      report_.firstUnmet = report_.unmet;
      report_.firstCost = report_.cost;
    }
  }

  void note(double objective, double bound) {
    value_ = objective;
    bound_ = std::max(bound_, bound);
    if (phase_ == Phase::kUnmet) {
      report_.unmet = objective;
      report_.unmetBound = std::max(report_.unmetBound, bound);
    } else if (phase_ == Phase::kCost) {
      report_.cost = objective;
      report_.costBound = std::max(report_.costBound, bound);
    }
  }

  // True when the bound has met the objective.
  bool isClosed() const { return value_ - bound_ <= kOpen * 1e-3 * std::fabs(value_); }

  void add(const std::vector<NewPattern> &patterns) {
    const int before = lp_.model().columns();
    for (const NewPattern &pattern : patterns) {
      known_.insert(keyOf(pattern));
      lp_.addPattern(problem_, addPattern(network_, problem_, pattern));
      ++report_.patterns;
    }
    solver_.addColumns(lp_.model(), before);
    for (int column = before; phase_ == Phase::kUnmet && column < lp_.model().columns(); ++column) {
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
  Phase phase_ = Phase::kSum;
  double value_ = 0;
  double bound_ = -kInfinite;  // the best of the phase
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
