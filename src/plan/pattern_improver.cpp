#include "plan/pattern_improver.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "plan/empty_stores.h"
#include "plan/linear_solver.h"
#include "plan/network_pricing.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

// Of the demand within reach: unmet rolls that solutions of equal unmet demand may differ by.
constexpr double kSameUnmet = 1e-7;
// How an undercost that was too low rises, and how often at most.
constexpr double kRise = 16;
constexpr int kMostRises = 4;
// Patterns of a cutter and period in a round.
constexpr int kDisjoint = 8;
// What the bound may leave open of a cost, relative: where no more patterns are looked for, and
// once none improves.
constexpr double kClosed = 1e-9;
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
  Improver(Network &network, PlanProblem &problem, const std::vector<CutterMenu> &menus,
           const ImproveOptions &options, const ImproveProgress &progress)
      : network_(network),
        problem_(problem),
        menus_(menus),
        options_(options),
        progress_(progress),
        lp_(problem),
        solver_(lp_.model()) {
    for (const Pattern &pattern : problem.patterns) {
      known_.insert(keyOf(pattern));
    }
  }

  Improvement run() {
    startSum(problem_.highestUndercost);
    bool isDone = generate(solveFirst(problem_, lp_, solver_));
    for (int rises = 0; isShort(); ++rises) {
      startUnmet();
      isDone = generate(solver_.solve(Method::kPrimal)) && isDone;
      if (!isDone || isLeastUnmet()) {
        break;
      }
      startSum(kRise * undercost_);
      isDone = generate(solver_.solve(Method::kPrimal)) && rises < kMostRises;
    }
    report_.isComplete = isDone;
    return {report_, std::move(lp_), std::move(basis_)};
  }

 private:
  // Unmet demand and cost as one sum, with unmet rolls at so much each.
  void startSum(double undercost) {
    step_ = PlanStep::kCost;
    undercost_ = undercost;
    startStep(1.0);
  }

  void startUnmet() {
    step_ = PlanStep::kUnmet;
    startStep(0.0);
  }

  void startStep(double costs) {
    bound_ = -kInfinite;
    for (int column = 0; column < lp_.model().columns(); ++column) {
      solver_.setCost(column, costs * lp_.model().cost[static_cast<std::size_t>(column)]);
    }
    for (const int column : lp_.unmetColumns()) {
      solver_.setCost(column, undercost_ * lp_.unmetWeight(problem_, column));
    }
  }

  // Rounds of one step. False when time or the solver ended it.
  bool generate(LinearSolution solution) {
    while (solution.status == Status::kOptimal) {
      const std::vector<NewPattern> patterns = price(solution);
      progress_(report_);
      if (step_ == PlanStep::kCost) {
        basis_ = solver_.basis();
      }
      if (patterns.empty() || isClosed(kClosed)) {
        return isClosed(kOpen);
      }
      if (options_.seconds > 0 && now() - start_ > options_.seconds) {
        report_.isTimeUp = true;
        return false;
      }
      add(patterns);
      solution = solver_.solve(Method::kPrimal);
    }
    return false;
  }

  // The patterns of a round that are not there yet. Pricing knows trim to more digits than a file
  // has, so it may go on to ask for a pattern that costs a little more than it thinks.
  std::vector<NewPattern> price(const LinearSolution &solution) {
    ++report_.rounds;
    const PricingRound round = pricePatterns({network_, problem_, lp_, menus_, options_.limit},
                                             solution.dual, step_, kDisjoint);
    note(solution, round.mostGain);
    std::vector<NewPattern> patterns;
    for (const PricedPattern &priced : round.patterns) {
      if (!known_.contains(keyOf(priced.pattern))) {
        patterns.push_back(priced.pattern);
      }
    }
    return patterns;
  }

  void note(const LinearSolution &solution, double mostGain) {
    bound_ = std::max(bound_, solution.objective - mostGain);
    gap_ = solution.objective - bound_;
    if (step_ == PlanStep::kUnmet) {
      leastUnmet_ = solution.objective / undercost_;
      report_.unmetBound = std::max(report_.unmetBound, bound_ / undercost_);
      return;
    }
    report_.unmet = sumOver(solution, [this](int column) { return weightOf(column); });
    report_.cost = sumOver(solution, [this](int column) {
      return lp_.model().cost[static_cast<std::size_t>(column)];
    });
    if (std::isnan(report_.firstCost)) {
      report_.firstUnmet = report_.unmet;
      report_.firstCost = report_.cost;
    }
    report_.costBound = report_.cost - gap_;
  }

  template <typename Weight>
  double sumOver(const LinearSolution &solution, const Weight &weight) const {
    double sum = 0;
    for (int column = 0; column < lp_.model().columns(); ++column) {
      sum += weight(column) * solution.primal[static_cast<std::size_t>(column)];
    }
    return sum;
  }

  double weightOf(int column) const {
    return lp_.column(column).kind == ColumnKind::kUnmet ? lp_.unmetWeight(problem_, column) : 0;
  }

  // True when the bound leaves no more than such a share open of what the step minimises.
  bool isClosed(double share) const {
    return gap_ <=
           share * (step_ == PlanStep::kUnmet ? undercost_ * leastUnmet_ : std::fabs(report_.cost));
  }

  // Rolls that solutions of equal unmet demand may differ by.
  double unmetTolerance() const {
    double demand = 0;
    for (const int column : lp_.unmetColumns()) {
      demand += lp_.model().upper[static_cast<std::size_t>(column)];
    }
    return kSameUnmet * (1 + demand);
  }
  bool isShort() const { return report_.unmet > unmetTolerance(); }
  bool isLeastUnmet() const { return report_.unmet <= leastUnmet_ + unmetTolerance(); }

  void add(const std::vector<NewPattern> &patterns) {
    const int before = lp_.model().columns();
    for (const NewPattern &pattern : patterns) {
      known_.insert(keyOf(pattern));
      lp_.addPattern(problem_, addPattern(network_, problem_, pattern));
      ++report_.patterns;
    }
    solver_.addColumns(lp_.model(), before);
    for (int column = before; step_ == PlanStep::kUnmet && column < lp_.model().columns();
         ++column) {
      solver_.setCost(column, 0);
    }
  }

  double now() const {
    return options_.clock
               ? options_.clock()
               : std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
                     .count();
  }

  Network &network_;
  PlanProblem &problem_;
  const std::vector<CutterMenu> &menus_;
  const ImproveOptions &options_;
  const ImproveProgress &progress_;
  CompactLp lp_;
  LinearSolver solver_;
  std::set<PatternKey> known_;
  PlanStep step_ = PlanStep::kCost;
  double undercost_ = 0;       // money a roll
  double bound_ = -kInfinite;  // the best of the step, money
  double gap_ = kInfinite;     // of the last solution to it
  double leastUnmet_ = 0;      // the last of the other step
  Basis basis_;
  ImproveReport report_;
  double start_ = now();
};

}  // namespace

Improvement improvePatterns(Network &network, PlanProblem &problem,
                            const std::vector<CutterMenu> &exactMenus,
                            const ImproveOptions &options, const ImproveProgress &progress) {
  const std::vector<CutterMenu> menus =
      exactMenus.empty() ? cutterMenus(network, problem) : exactMenus;
  const int added = fillEmptyStores(network, problem, menus, options.limit);
  Improvement improvement = Improver(network, problem, menus, options, progress).run();
  improvement.report.patterns += added;
  return improvement;
}

}  // namespace corvane::plan
