#pragma once

#include "network/network.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// The network as one linear programme without any reduction: a column for the flow on every arc,
// the runs of every process, stock, surplus and unmet demand of every node, in every period, and a
// row for every node and commodity. It is made of the nodes and arcs alone; of the problem it takes
// only which patterns are left out, and its options.
struct FullAnswer {
  bool solved = false;
  double unmet = 0.0;  // weighted by undercost, in units of the highest
  double cost = 0.0;
};

// In two steps, as the plan is.
FullAnswer solveFullForm(const Network &network, const PlanProblem &problem);

}  // namespace corvane::plan
