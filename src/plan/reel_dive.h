#pragma once

#include <functional>
#include <optional>

#include "plan/linear_solver.h"
#include "plan/reel_search.h"

namespace corvane::plan {

// A first plan of whole reels, by diving: the LP is solved, some reels of the largest fractions are
// rounded up for good where the machine has the time, and again, until all are whole. Whole reels
// take more time than the LP thinks: of the time that rounding all fractions up would take, the
// part `reserve` is kept back on each machine, and given free as fewer are left. Nothing when the
// LP cannot be solved or `isOver` says so before the end.
std::optional<ReelPlan> diveForReels(const ReelSpace &space, double reserve,
                                     const std::function<bool()> &isOver);

}  // namespace corvane::plan
