#pragma once

#include <string>
#include <vector>

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

// The largest linear programme, in rows, beside which others are solved or patterns are priced for
// advice: planners wait for no longer than about twice the time of the plan.
inline constexpr int kMostAdviceRows = 5000;

// The machines and periods where one more day is worth most, the best three: the dual values of
// their rows. As the least cost is convex in the days, a dual value is the most that a whole day
// may save. Days that deliver more are told in rolls, of the highest undercost, and come first.
std::vector<Advice> adviseDays(const LinearOptimum &optimum);

// Solves the plan again with stock, and with each mill's own transit time, where that is another
// linear programme. The time limit is that of each solve in seconds, 0: none; where it ends one,
// or the file cannot be planned so, nothing is told.
std::vector<Advice> adviseWhatIfs(const LinearOptimum &optimum, double timeLimit);

// Prices patterns of at most `limit` rolls once, under the duals of the step that is not content:
// the first where rolls are unmet, else the second. Tells of the one that gains most a reel.
std::vector<Advice> advisePatterns(const LinearOptimum &optimum, int limit);

}  // namespace corvane::plan
