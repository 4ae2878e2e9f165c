#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "network/network.h"
#include "plan/advice.h"
#include "plan/plan.h"
#include "plan/totals.h"

namespace corvane::plan {

// What the solver had to do, and what its linear programme says.
struct SolverRecord {
  int rows = 0;
  int columns = 0;
  int nonzeros = 0;
  double lpUnmet = 0.0;  // rolls, with what is out of reach
  double lpCost = 0.0;
  bool wholeReels = false;
  std::string way;                // how whole reels were found; empty where reels are not whole
  std::optional<double> gapToLp;  // of the cost of whole reels, as a fraction of lpCost
  // Further figures, such as those of improving, by name.
  std::vector<std::pair<std::string, double>> figures;
  // Seconds by step; empty unless they were asked for, as no two runs agree on them.
  std::vector<std::pair<std::string, double>> seconds;
};

// A solved plan with everything that is told of it. The network and the problem are the caller's.
struct PlanRecord {
  const Network &network;
  const PlanProblem &problem;
  Plan plan;
  Totals totals;
  SolverRecord solver;
  std::vector<network::Warning> warnings;  // by line
  std::vector<std::string> faults;         // empty, or the plan is wrong
  std::vector<Advice> advice;              // what else would pay; empty unless it was asked for
};

// Explains what is unmet, sums up, checks every equation and gathers the warnings.
PlanRecord makeRecord(const Network &network, const PlanProblem &problem, Plan plan,
                      SolverRecord solver);

// The widths of a pattern's reel in the file's words, "41.125", with the rolls of each.
std::vector<std::pair<std::string, double>> rollsByWidth(const Network &network,
                                                         const Pattern &pattern);

}  // namespace corvane::plan
