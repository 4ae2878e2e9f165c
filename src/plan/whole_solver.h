#pragma once

#include <optional>
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
};

struct WholeSolution {
  std::vector<double> values;
  double cost = 0;
  double bound = 0;        // no solution costs less
  bool isOptimal = false;  // within the gap
};

// Branch and cut by CBC, which says nothing. Nothing where there is no solution below the cutoff,
// or none was found within the limits. Whole values are exact.
std::optional<WholeSolution> solveWhole(const LinearModel &program, const WholeLimits &limits);

}  // namespace corvane::plan
