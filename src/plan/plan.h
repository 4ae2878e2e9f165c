#pragma once

#include <map>
#include <tuple>
#include <vector>

#include "plan/compact_lp.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// What is done when: the values of a solved problem. Tables hold a value for each thing of the
// problem and period t, at thing * T + t.
struct Plan {
  std::vector<double> reels;    // by pattern
  std::vector<double> ships;    // by route, by the period of leaving
  std::vector<double> surplus;  // by store
  std::vector<double> stock;    // by store: rolls that stay until the next period
  std::vector<double> unmet;    // by order, with what is out of reach
  // Rolls by pattern, yield, its store and period, where a yield has several stores.
  std::map<std::tuple<Index, Index, Index, Index>, double> splits;
  std::vector<Reason> reasons;  // by order; kMet where nothing is unmet
};

// The plan of a solution of the compact form. What the solver's tolerances leave of 0 or of a whole
// number is dropped.
Plan readPlan(const PlanProblem &problem, const CompactLp &lp, const std::vector<double> &primal);

}  // namespace corvane::plan
