#pragma once

#include <optional>
#include <string>
#include <vector>

#include "network/warning.h"
#include "plan/compact_lp.h"
#include "plan/linear_model.h"
#include "plan/totals.h"

namespace corvane::plan {

// What else would pay, beside the linear plan: days of full machines, stock, each mill's own
// transit time, patterns. Told is what delivers rolls that stay unmet, or saves a ten-thousandth
// of the cost.

// Something that would make the plan better, in a line.
struct Advice {
  std::string kind;  // "machine-day", "stock", "delays-by-mill" or "patterns"
  std::string text;
};

// A solved linear plan; everything is the caller's.
struct LinearOptimum {
  const Network &network;
  const PlanProblem &problem;
  const CompactLp &lp;
  const LinearSolution &solution;        // of the second step
  const std::vector<double> &unmetDual;  // of the first step; empty where all can be delivered
  const Totals &totals;
};

// The machines and periods where one more day is worth most, the best three: the dual values of
// their rows. As the least cost is convex in the days, a dual value is the most that a whole day
// may save. Days that deliver more are told in rolls, of the highest undercost, with the largest
// orders of which rolls are short that the machine could make then; they come first.
std::vector<Advice> adviseDays(const LinearOptimum &optimum);

// The totals of the plan with other options; nothing where they leave the linear programme as it
// is, or where the time ended it.
struct WhatIfs {
  std::optional<Totals> stock;
  std::optional<Totals> delaysByMill;
};

// Solves the plan again with stock, and with each mill's own transit time. The time limit is that
// of each solve in seconds, 0: none.
WhatIfs solveWhatIfs(const LinearOptimum &optimum, double timeLimit);

// Those of them that pay.
std::vector<Advice> adviseWhatIfs(const LinearOptimum &optimum, const WhatIfs &whatIfs);

// What it costs that mills differ in transit time and the file has one for all, or gains; nothing
// where it has one for each, or the plan goes by each mill's own. `whatIfs` is empty where they
// were not solved.
std::optional<network::Warning> warnOfDelays(const LinearOptimum &optimum,
                                             const std::optional<WhatIfs> &whatIfs);

// Prices patterns of at most `limit` rolls once, under the duals of the step that is not content:
// the first where rolls are unmet, else the second. Tells of the one that gains most a reel.
std::vector<Advice> advisePatterns(const LinearOptimum &optimum, int limit);

}  // namespace corvane::plan
