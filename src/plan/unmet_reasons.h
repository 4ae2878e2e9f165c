#pragma once

#include <utility>
#include <vector>

#include "plan/plan.h"

namespace corvane::plan {

// A machine and a period.
struct MachineTime {
  Index machine = kNone;
  Index period = 0;
  // clang-tidy 14 takes the 0 that compilers put in here for a null pointer of ours.
  auto operator<=>(const MachineTime &) const = default;  // NOLINT(modernize-use-nullptr)
};

// Days that the plan uses of each machine, at machine * T + period.
std::vector<double> usedDays(const PlanProblem &problem, const Plan &plan);

// The machines, and the periods in which they would have to run, that could make rolls for the
// order so that they arrive in the period; sorted.
std::vector<MachineTime> possibleMakers(const PlanProblem &problem, const Order &order,
                                        std::size_t period);

// Sets the reason of everything that is unmet: machine time where all possible makers are full,
// else whole reels. What is out of reach has its reason already.
void explainUnmet(const PlanProblem &problem, Plan &plan);

}  // namespace corvane::plan
