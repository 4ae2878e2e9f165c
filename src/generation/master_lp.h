#pragma once

#include <QString>
#include <iosfwd>
#include <vector>

#include "generation/lp_columns.h"
#include "generation/pattern_set.h"
#include "planning/demand_table.h"

namespace corvane {

// The master LP of one grade and period: how often to run each known pattern so that every demanded
// width is covered, with the least paper.
//
//   minimise    sum_j D_j x_j          D_j: deckle width of pattern j, inches
//   subject to  sum_j a_ij x_j >= d_i  a_ij: times that pattern j cuts width i; d_i: its demand
//               x_j >= 0
//
// It starts from one single-width pattern a width and grows by the columns that pricing finds.

// Builds the starting LP, and its seed patterns in the grade's set of the smallest deckle width.
// widths are the rows, distinct and descending, inches; demands holds the quantity of each, or is
// empty when the period has none, and then all right-hand sides are 0. Every seed counts as a
// pattern, whether its set held it already or not. Memory that cannot be had ends the run.
LpProblem buildMasterLp(const QString &grade, const std::vector<double> &widths,
                        const std::vector<DemandEntry> &demands, double smallestDeckleWidth,
                        PatternSets &sets, std::ostream &log);

}  // namespace corvane
