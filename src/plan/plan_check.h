#pragma once

#include <string>
#include <vector>

#include "network/network.h"
#include "plan/plan.h"
#include "plan/totals.h"

namespace corvane::plan {

// Recomputes every equation of the network from its nodes and arcs and the flows of a plan, and
// says which do not hold; empty when the plan is right. Neither the linear programme nor its costs
// are looked at:
//
//  - a machine gives no more days than it has; a process takes and gives what its recipe says, and
//    a batch what it takes;
//  - at a store, what was kept and what comes in goes out, is kept or is surplus, and no more is
//    kept than it may; a delay gives what entered it so many periods before, and nothing arrives
//    behind the last period; at an order, what arrives and what is unmet is what was demanded;
//  - no flow is below 0;
//  - the cost of all flows is that of the totals, and the paper is that of the delivered rolls, the
//    surplus and the trim.
//
// Sums are compared to within a millionth of what they add up.
std::vector<std::string> checkPlan(const Network &network, const PlanProblem &problem,
                                   const Plan &plan, const Totals &totals);

}  // namespace corvane::plan
