#pragma once

#include <vector>

#include "network/network.h"
#include "plan/cutter_menu.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// The file's network says nothing of rolls that no pattern yields, and a plan leaves them out.
// Gives each width of each cutter a pattern, of as many rolls as fit and at most `limit`; returns
// how many.
int fillEmptyStores(Network &network, PlanProblem &problem, const std::vector<CutterMenu> &menus,
                    int limit);

}  // namespace corvane::plan
