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
#include "plan/unmet_reasons.h"

namespace corvane::plan {

namespace {

constexpr std::size_t kMostDays = 3;
constexpr std::size_t kMostOrders = 2;
// Of the cost.
constexpr double kWorthTelling = 1e-4;
// Rolls; less is what solvers leave.
constexpr double kLeastUnmet = 1e-3;

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
    if (rolls > kLeastUnmet) {
      days.push_back({role.what, role.period, std::min(rolls, unmetInReach(optimum)), 0.0});
    } else if (money > worthTelling(optimum)) {
      days.push_back({role.what, role.period, 0.0, money});
    }
  }
  return days;
}

// The largest orders of which rolls are short that the machine could make in the period.
std::string shortOrders(const LinearOptimum &optimum, const Day &day) {
  struct Short {
    double rolls = 0.0;
    const ColumnRole *order = nullptr;
  };
  std::vector<Short> orders;
  for (const int column : optimum.lp.unmetColumns()) {
    const ColumnRole &role = optimum.lp.column(column);
    const double rolls = optimum.solution.primal[static_cast<std::size_t>(column)];
    if (rolls <= kLeastUnmet) {
      continue;
    }
    const std::vector<MachineTime> makers =
        possibleMakers(optimum.problem, optimum.problem.orders[role.what], role.period);
    if (std::binary_search(makers.begin(), makers.end(), MachineTime{day.machine, day.period})) {
      orders.push_back({rolls, &role});
    }
  }
  std::stable_sort(orders.begin(), orders.end(), [](const Short &a, const Short &b) {
    return std::round(a.rolls * 1e6) > std::round(b.rolls * 1e6);
  });
  std::string text;
  for (std::size_t at = 0; at < std::min(orders.size(), kMostOrders); ++at) {
    const ColumnRole &order = *orders[at].order;
    text += (at == 0 ? "; of what is short it makes " : " and ") +
            optimum.problem.orders[order.what].name + " in " +
            optimum.problem.periods[order.period];
  }
  return text;
}

std::string savedText(double saved, double cost) {
  return "saves " + grouped(saved) + (cost > 0.0 ? ", " + percent(saved, cost, 2) : "");
}

// What a what-if gains, in words; empty where it does not pay.
std::string gainText(const LinearOptimum &optimum, const Totals &other) {
  const double rolls = optimum.totals.unmetRolls - other.unmetRolls;
  const double cost = optimum.totals.cost.total();
  const double saved = cost - other.cost.total();
  if (rolls > kLeastUnmet) {
    return "delivers " + count(rolls) + " rolls more, at a cost of " + grouped(cost - saved) +
           " instead of " + grouped(cost);
  }
  return rolls > -kLeastUnmet && saved > worthTelling(optimum) ? savedText(saved, cost) : "";
}

// What each mill's own transit time would make of the plan, better or worse.
std::string differenceText(const Totals &plan, const std::optional<Totals> &byMill) {
  if (!byMill || (std::fabs(byMill->unmetRolls - plan.unmetRolls) <= kLeastUnmet &&
                  std::fabs(byMill->cost.total() - plan.cost.total()) < 1.0)) {
    return "with each mill's own (--delays by-mill) the plan would be no other";
  }
  return "with each mill's own (--delays by-mill) " + count(byMill->unmetRolls) +
         " rolls would stay unmet instead of " + count(plan.unmetRolls) + ", at a cost of " +
         grouped(byMill->cost.total()) + " instead of " + grouped(plan.cost.total());
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
                            (day.rolls > 0.0 ? " delivers up to " + count(day.rolls) +
                                                   " rolls more" + shortOrders(optimum, day)
                                             : " saves up to " + grouped(day.money))});
  }
  return advice;
}

WhatIfs solveWhatIfs(const LinearOptimum &optimum, double timeLimit) {
  ProblemOptions stock = optimum.problem.options;
  stock.freeStock = true;
  ProblemOptions delays = optimum.problem.options;
  delays.delaysByMill = true;
  return {totalsOf(optimum, stock, timeLimit), totalsOf(optimum, delays, timeLimit)};
}

std::vector<Advice> adviseWhatIfs(const LinearOptimum &optimum, const WhatIfs &whatIfs) {
  std::vector<Advice> advice;
  for (const auto &[totals, kind, head] :
       {std::tuple(whatIfs.stock, "stock", "stock at the cutters (--storage inf) "),
        std::tuple(whatIfs.delaysByMill, "delays-by-mill",
                   "each mill's own transit time (--delays by-mill) ")}) {
    if (const std::string gain = totals ? gainText(optimum, *totals) : ""; !gain.empty()) {
      advice.push_back({kind, head + gain});
    }
  }
  return advice;
}

std::optional<network::Warning> warnOfDelays(const LinearOptimum &optimum,
                                             const std::optional<WhatIfs> &whatIfs) {
  const std::vector<network::Warning> &warnings = optimum.network.warnings;
  const bool differs = std::any_of(
      warnings.begin(), warnings.end(),
      [](const network::Warning &warning) { return warning.kind == network::kDelayDiffers; });
  if (!differs || optimum.problem.options.delaysByMill) {
    return std::nullopt;
  }
  const std::string head = "mills differ in transit time, and the file has one for all: ";
  return network::Warning{
      0, network::kDelayDiffers,
      head + (whatIfs ? differenceText(optimum.totals, whatIfs->delaysByMill)
                      : "--delays by-mill tells what the plan would be with each mill's own")};
}

std::vector<Advice> advisePatterns(const LinearOptimum &optimum, int limit) {
  const bool isShort = !optimum.unmetDual.empty();
  const std::vector<CutterMenu> menus = cutterMenus(optimum.network, optimum.problem);
  const PricingRound round =
      pricePatterns({optimum.network, optimum.problem, optimum.lp, menus, limit},
                    isShort ? optimum.unmetDual : optimum.solution.dual,
                    isShort ? PlanStep::kUnmet : PlanStep::kCost, 1);
  const auto best = std::min_element(
      round.patterns.begin(), round.patterns.end(),
      [](const PricedPattern &a, const PricedPattern &b) { return a.reducedCost < b.reducedCost; });
  if (best == round.patterns.end() ||
      round.mostGain <= (isShort ? kLeastUnmet : worthTelling(optimum))) {
    return {};
  }
  const std::string gain = isShort ? "deliver up to " + count(-best->reducedCost) + " rolls more"
                                   : "save up to " + grouped(-best->reducedCost);
  return {{"patterns",
           "a better pattern of " + optimum.problem.cutters[best->pattern.cutter].name + " would " +
               gain + " a reel: --improve finds such patterns; a higher occur min or --pool may"}};
}

}  // namespace corvane::plan
