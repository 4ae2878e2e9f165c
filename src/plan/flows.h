#pragma once

#include <vector>

#include "network/network.h"
#include "plan/plan.h"

namespace corvane::plan {

// The flow on every arc of the network in every period that the plan's reels and shipments make, at
// arc * T + period.
std::vector<double> arcFlows(const Network &network, const PlanProblem &problem, const Plan &plan);

}  // namespace corvane::plan
