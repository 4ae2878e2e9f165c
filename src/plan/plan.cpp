#include "plan/plan.h"

#include <algorithm>
#include <cmath>

namespace corvane::plan {

namespace {

// What a solver leaves beside a whole number, relative to it.
constexpr double kNotWhole = 1e-9;

double cleaned(double value) {
  const double whole = std::round(value);
  return std::max(std::fabs(value - whole) <= kNotWhole * std::max(1.0, whole) ? whole : value,
                  0.0);
}

}  // namespace

Plan readPlan(const PlanProblem &problem, const CompactLp &lp, const std::vector<double> &primal) {
  const std::size_t periods = problem.periodCount();
  Plan plan;
  plan.reels.resize(problem.patterns.size() * periods);
  plan.ships.resize(problem.routes.size() * periods);
  plan.surplus.resize(problem.stores.size() * periods);
  plan.stock.resize(problem.stores.size() * periods);
  plan.unmet.resize(problem.orders.size() * periods);
  plan.reasons.resize(problem.orders.size() * periods, Reason::kMet);
  for (std::size_t order = 0; order < problem.orders.size(); ++order) {
    for (std::size_t period = 0; period < periods; ++period) {
      const std::size_t at = order * periods + period;
      plan.reasons[at] = problem.orders[order].reach[period];
      if (plan.reasons[at] != Reason::kMet) {
        plan.unmet[at] = problem.orders[order].demand[period];
      }
    }
  }
  for (int column = 0; column < lp.model().columns(); ++column) {
    const ColumnRole &role = lp.column(column);
    const double value = cleaned(primal[static_cast<std::size_t>(column)]);
    const std::size_t at = role.what * periods + role.period;
    switch (role.kind) {
      case ColumnKind::kReels:
        plan.reels[at] = value;
        break;
      case ColumnKind::kShip:
        plan.ships[at] = value;
        break;
      case ColumnKind::kSurplus:
        plan.surplus[at] = value;
        break;
      case ColumnKind::kStock:
        plan.stock[at] = value;
        break;
      case ColumnKind::kUnmet:
        plan.unmet[at] = value;
        break;
      case ColumnKind::kSplit:
        if (value > 0.0) {
          plan.splits[{role.what, role.yield, role.store, role.period}] = value;
        }
        break;
    }
  }
  return plan;
}

}  // namespace corvane::plan
