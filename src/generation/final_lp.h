#pragma once

#include "generation/generation_context.h"

namespace corvane {

// The final LPs: for every grade and period the LP over all patterns of the grade,
//
//   minimise    sum_j D_j x_j
//   subject to  sum_j a_ij x_j >= d_i   for every width i that the grade needs in any period
//               x_j >= 0
//
// whose matrix is that of the grade and whose right-hand sides are those of the period.

// Appends to every pattern, period by period, its activity, its reduced cost and an inModel of 0.
// Faults end the run.
void solveFinalLps(const GenerationContext &context);

// Ends the run with the text when the two counts differ: a guard against a fault of our own.
void requireEqualCounts(int counted, int built, const char *text, std::ostream &log);

}  // namespace corvane
