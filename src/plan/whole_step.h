#pragma once

#include <optional>
#include <string>

#include "core/progress.h"
#include "plan/linear_solver.h"
#include "plan/whole_reels.h"

namespace corvane::plan {

struct WholeStepResult {
  LinearSolution solution;  // of the compact LP with the reels fixed at whole numbers
  std::string way;
};

// The part of a run that makes reels whole: looks for them, then solves what is left of the LP in
// its two steps. Nothing when there was no plan in time.
std::optional<WholeStepResult> planWhole(const PlanProblem &problem, const CompactLp &lp,
                                         const LinearSolution &optimum,
                                         const WholeReelOptions &options, ProgressLine &progress);

}  // namespace corvane::plan
