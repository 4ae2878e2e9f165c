#pragma once

#include <QLinkedList>
#include <QString>
#include <iosfwd>

#include "generation/pattern_set.h"
#include "planning/demand_table.h"

namespace corvane {

// Marks, for every pattern set and period, the patterns that enter the model: those that the final
// selection uses, and further ones for demand widths that occur in fewer than occurMin patterns.
// Each width that still does is reported on standard output and in the log. Widths are compared
// exactly.
//
// REQUIRES that every pattern has one xValues and one inModel entry a period. The cost grows with
// the widths in the patterns times the periods.
void reportPatterns(const QLinkedList<QString> &grades, int periodCount, const DemandTable &demand,
                    PatternSets &sets, qint32 occurMin, std::ostream &log);

}  // namespace corvane
