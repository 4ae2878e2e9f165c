#include "plan/unmet_reasons.h"

#include <algorithm>
#include <set>

namespace corvane::plan {

namespace {

// Of a machine's days; a solver leaves so much.
constexpr double kFull = 1.0 - 1e-6;

// The periods in which rolls can be made that leave the store in `leaving`.
std::size_t earliestMaking(const Store &store, std::size_t leaving) {
  while (leaving > 0 && store.stockMax[leaving - 1] > 0.0) {
    --leaving;
  }
  return leaving;
}

// The machines that can make what leaves the store in `leaving`, and when.
void addMakers(const PlanProblem &problem, const Store &store, std::size_t leaving,
               std::set<MachineTime> &makers) {
  for (const Index pattern : store.patterns) {
    const Cutter &cutter = problem.cutters[problem.patterns[pattern].cutter];
    if (cutter.capacity > 0.0) {
      for (std::size_t making = earliestMaking(store, leaving); making <= leaving; ++making) {
        makers.insert({cutter.machine, static_cast<Index>(making)});
      }
    }
  }
}

}  // namespace

std::vector<double> usedDays(const PlanProblem &problem, const Plan &plan) {
  const std::size_t periods = problem.periodCount();
  std::vector<double> days(problem.machines.size() * periods);
  for (std::size_t index = 0; index < problem.patterns.size(); ++index) {
    const Cutter &cutter = problem.cutters[problem.patterns[index].cutter];
    for (std::size_t period = 0; period < periods; ++period) {
      if (const double reels = plan.reels[index * periods + period]; reels > 0.0) {
        days[cutter.machine * periods + period] += reels / cutter.capacity;
      }
    }
  }
  return days;
}

std::vector<MachineTime> possibleMakers(const PlanProblem &problem, const Order &order,
                                        std::size_t period) {
  std::set<MachineTime> makers;
  for (const Index index : order.routes) {
    const Route &route = problem.routes[index];
    for (std::size_t leaving = 0; leaving < problem.periodCount(); ++leaving) {
      if (route.arrival[leaving] == period) {
        addMakers(problem, problem.stores[route.store], leaving, makers);
      }
    }
  }
  return {makers.begin(), makers.end()};
}

void explainUnmet(const PlanProblem &problem, Plan &plan) {
  const std::size_t periods = problem.periodCount();
  const std::vector<double> used = usedDays(problem, plan);
  const auto isFull = [&](const MachineTime &time) {
    return used[time.machine * periods + time.period] >=
           kFull * problem.machines[time.machine].days[time.period];
  };
  for (std::size_t order = 0; order < problem.orders.size(); ++order) {
    for (std::size_t period = 0; period < periods; ++period) {
      const std::size_t at = order * periods + period;
      if (plan.unmet[at] > 0.0 && plan.reasons[at] == Reason::kMet) {
        const auto makers = possibleMakers(problem, problem.orders[order], period);
        plan.reasons[at] = std::all_of(makers.begin(), makers.end(), isFull) ? Reason::kMachineTime
                                                                             : Reason::kWholeReels;
      }
    }
  }
}

}  // namespace corvane::plan
