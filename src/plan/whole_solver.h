#pragma once

#include <vector>

#include "plan/linear_model.h"

namespace corvane::plan {

// Where a search for a whole solution ends. The nodes make it the same on every machine; the
// seconds of processor time do not, and are there so that one search cannot eat the time of all.
struct WholeLimits {
  int nodes = 1000;
  double seconds = 60;
  double gap = 0;             // relative; a solution this close to the bound will do
  double cutoff = kInfinite;  // only solutions of less cost count
  // Cutting planes take most of the time on programmes of reels and move the bound little; where
  // trees of many nodes end without them, they help.
  bool cuts = false;
};

struct WholeAnswer {
  bool isFound = false;  // a solution below the cutoff
  // Nothing costs less, within the gap: than the solution found, or than the cutoff.
  bool isOptimal = false;
  std::vector<double> values;  // of the solution; whole ones exactly so
  double cost = 0;
};

// Branch and cut by CBC, which says nothing.
WholeAnswer solveWhole(const LinearModel &program, const WholeLimits &limits);

}  // namespace corvane::plan
