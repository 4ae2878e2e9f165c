#include "plan/advice.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

#include "plan/cutter_menu.h"
#include "plan/figures.h"
#include "plan/network_pricing.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

constexpr std::size_t kMostDays = 3;
// Of the cost.
constexpr double kWorthTelling = 1e-4;
// Rolls; less is what solvers leave.
constexpr double kLeastRolls = 1e-3;

double worthTelling(const LinearOptimum &optimum) {
  return kWorthTelling * std::max(std::fabs(optimum.totals.cost.total()), 1.0);
}

double unmetInReach(const LinearOptimum &optimum) {
  return optimum.totals.unmetRolls - optimum.totals.unmetOutOfReach;
}

// What a day more would bring.
struct Day {
  Index machine = kNone;
  Index period = 0;
  double rolls = 0.0;
  double money = 0.0;
};

std::vector<Day> worthyDays(const LinearOptimum &optimum) {
  std::vector<Day> days;
  for (int row = 0; row < optimum.lp.model().rows(); ++row) {
    const RowRole &role = optimum.lp.row(row);
    if (role.kind != RowKind::kMachine) {
      continue;
    }
    const auto at = static_cast<std::size_t>(row);
    const double rolls = optimum.unmetDual.empty() ? 0.0 : -optimum.unmetDual[at];
    const double money = -optimum.solution.dual[at];
    if (rolls > kLeastRolls) {
      days.push_back({role.what, role.period, std::min(rolls, unmetInReach(optimum)), 0.0});
    } else if (money > worthTelling(optimum)) {
      days.push_back({role.what, role.period, 0.0, money});
    }
  }
  return days;
}

std::string savedText(double saved, double cost) {
  return "saves " + grouped(saved) + (cost > 0.0 ? ", " + percent(saved, cost, 2) : "");
}

// What a what-if gains, in words; empty where it does not pay.
std::string gainText(const LinearOptimum &optimum, const Totals &other) {
  const double rolls = optimum.totals.unmetRolls - other.unmetRolls;
  const double cost = optimum.totals.cost.total();
  const double saved = cost - other.cost.total();
  if (rolls > kLeastRolls) {
    return "delivers " + count(rolls) + " rolls more, at a cost of " + grouped(cost - saved) +
           " instead of " + grouped(cost);
  }
  return rolls > -kLeastRolls && saved > worthTelling(optimum) ? savedText(saved, cost) : "";
}

// The totals of the plan under other options; nothing where they leave the programme as it is.
std::optional<Totals> totalsOf(const LinearOptimum &optimum, const ProblemOptions &options,
                               double timeLimit) {
  const PlanProblem problem = makeProblem(optimum.network, options);
  const CompactLp lp(problem);
  if (lp.model() == optimum.lp.model()) {
    return std::nullopt;
  }
  LinearSolver solver(lp.model());
  const LinearSolution solution = TwoSteps(problem, lp, solver, {timeLimit, {}}).solve();
  if (solution.status != Status::kOptimal) {
    return std::nullopt;
  }
  return sumUp(optimum.network, problem, readPlan(problem, lp, solution.primal));
}

}  // namespace

std::vector<Advice> adviseDays(const LinearOptimum &optimum) {
  std::vector<Day> days = worthyDays(optimum);
  std::stable_sort(days.begin(), days.end(), [](const Day &a, const Day &b) {
    return std::pair(a.rolls, a.money) > std::pair(b.rolls, b.money);
  });
  days.resize(std::min(days.size(), kMostDays));
  std::vector<Advice> advice;
  advice.reserve(days.size());
  for (const Day &day : days) {
    advice.push_back(
        {"machine-day", "a day more of " + optimum.problem.machines[day.machine].name + " in " +
                            optimum.problem.periods[day.period] +
                            (day.rolls > 0.0 ? " delivers up to " + count(day.rolls) + " rolls more"
                                             : " saves up to " + grouped(day.money))});
  }
  return advice;
}

std::vector<Advice> adviseWhatIfs(const LinearOptimum &optimum, double timeLimit) {
  ProblemOptions stock = optimum.problem.options;
  stock.freeStock = true;
  ProblemOptions delays = optimum.problem.options;
  delays.delaysByMill = true;
  std::vector<Advice> advice;
  for (const auto &[options, kind, head] :
       {std::tuple(stock, "stock", "stock at the cutters (--storage inf) "),
        std::tuple(delays, "delays-by-mill", "each mill's own transit time (--delays by-mill) ")}) {
    if (const std::optional<Totals> other = totalsOf(optimum, options, timeLimit)) {
      if (const std::string gain = gainText(optimum, *other); !gain.empty()) {
        advice.push_back({kind, head + gain});
      }
    }
  }
  return advice;
}

std::vector<Advice> advisePatterns(const LinearOptimum &optimum, int limit) {
  const bool isShort = !optimum.unmetDual.empty();
  LinearSolution duals = optimum.solution;
  if (isShort) {
    duals.dual = optimum.unmetDual;
  }
  const PricingRound round = pricePatterns(optimum.network, optimum.problem, optimum.lp, duals,
                                           cutterMenus(optimum.network, optimum.problem), limit,
                                           isShort ? PlanStep::kUnmet : PlanStep::kCost);
  const auto best = std::min_element(
      round.patterns.begin(), round.patterns.end(),
      [](const PricedPattern &a, const PricedPattern &b) { return a.reducedCost < b.reducedCost; });
  if (best == round.patterns.end() ||
      round.mostGain <= (isShort ? kLeastRolls : worthTelling(optimum))) {
    return {};
  }
  const std::string gain = isShort ? "deliver up to " + count(-best->reducedCost) + " rolls more"
                                   : "save up to " + grouped(-best->reducedCost);
  return {{"patterns",
           "a better pattern of " + optimum.problem.cutters[best->pattern.cutter].name + " would " +
               gain + " a reel: --improve finds such patterns; a higher occur min or --pool may"}};
}

}  // namespace corvane::plan
