#pragma once

#include "plan/plan_problem.h"

namespace corvane::plan {

// What a pool gave.
struct PoolReport {
  int added = 0;
  int known = 0;    // there already, from the file itself or from the pool
  int foreign = 0;  // of a cutter or width that the file does not have
};

// Offers the usable patterns of another run of the same mill: those that the problem does not have
// yet, each once. Cutters and stores are the same where their names and widths are. Reach is found
// anew. Throws network::Refused when not one cutter is the same: the run is of another mill.
PoolReport addPool(Network &network, PlanProblem &problem, const Network &otherNetwork,
                   const PlanProblem &other);

}  // namespace corvane::plan
