#pragma once

#include <vector>

#include "generation/pattern_set.h"

namespace corvane {

// A demand width that too few patterns of a period hold.
struct RareWidth {
  double width;  // inches
  qint32 patterns;
};

// Marks, period by period, the patterns of a set that enter the model: those of positive activity,
// and further ones for demand widths that occur in fewer than occurMin patterns. Returns the widths
// that still do, period by period. Widths are compared exactly.
//
// demandWidths are the grade's, distinct and descending, inches. REQUIRES that every pattern has
// one xValues and one inModel entry a period. The cost grows with the widths in the patterns times
// the periods.
std::vector<RareWidth> choosePatterns(const PatternCompPattern &set,
                                      const std::vector<double> &demandWidths, qint32 periodCount,
                                      qint32 occurMin);

}  // namespace corvane
