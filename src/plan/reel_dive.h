#pragma once

#include <functional>
#include <optional>

#include "plan/linear_solver.h"
#include "plan/reel_search.h"

namespace corvane::plan {

struct DiveOptions {
  // Whole reels take more time than the LP thinks: of the time that rounding all fractions up would
  // take, this part is kept back on each machine, and given free as fewer are left.
  double reserve = 1;
  // The part of the fractions that each step holds where they are, the smallest first.
  double hold = 0;
};

// A first plan of whole reels, by diving: the LP is solved, some reels of the largest fractions are
// rounded up for good where the machine has the time, and again, until all are whole. Nothing when
// the LP cannot be solved or `isOver` says so before the end.
std::optional<ReelPlan> diveForReels(const ReelSpace &space, const DiveOptions &options,
                                     const std::function<bool()> &isOver);

}  // namespace corvane::plan
