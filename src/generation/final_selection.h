#pragma once

#include <QLinkedList>
#include <QString>
#include <iosfwd>

#include "core/progress.h"
#include "generation/generation_settings.h"
#include "generation/pattern_set.h"
#include "planning/demand_table.h"

namespace corvane {

// The final selection: for every grade and period the LP over all patterns of the grade,
//
//   minimise    sum_j D_j x_j
//   subject to  sum_j a_ij x_j >= d_i   for every width i that the grade needs in any period
//               x_j >= 0
//
// whose matrix is that of the grade and whose right-hand sides are those of the period.

// Appends to every pattern, period by period, its activity, its reduced cost and an inModel of 0,
// and gives every set its lists by reduced cost. Faults end the run.
void selectPatterns(const QLinkedList<QString> &grades, const QLinkedList<QString> &periods,
                    const DemandTable &demand, const GenerationSettings &settings,
                    PatternSets &sets, ProgressLine &progress, std::ostream &log);

// Ends the run with the text when the two counts differ: a guard against a fault of our own.
void requireEqualCounts(std::size_t counted, std::size_t built, const char *text,
                        std::ostream &log);

}  // namespace corvane
