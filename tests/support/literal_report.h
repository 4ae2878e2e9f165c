#pragma once

#include <QtGlobal>
#include <string>
#include <vector>

#include "core/numbers.h"

namespace corvane::support {

// The report of one pattern set as its procedure is told: every pass walks the whole set by index.

struct LiteralPattern {
  std::vector<double> widths;
  std::vector<double> xValues;
  std::vector<qint32> inModel;
};

// The place of the width in the list, or the list's length.
inline std::size_t literalPosition(double width, const std::vector<double> &demandWidths) {
  std::size_t at = 0;
  while (at < demandWidths.size() && demandWidths[at] != width) {
    ++at;
  }
  return at;
}

inline void literalCount(const LiteralPattern &pattern, const std::vector<double> &demandWidths,
                         std::vector<int> &counters) {
  double before = 0.0;
  for (const double width : pattern.widths) {
    const std::size_t at = literalPosition(width, demandWidths);
    if (width != before && at < counters.size()) {
      ++counters[at];
    }
    before = width;
  }
}

inline bool literalHolds(const LiteralPattern &pattern, double width) {
  for (const double held : pattern.widths) {
    if (held == width) {
      return true;
    }
  }
  return false;
}

inline void literalTopUp(std::vector<LiteralPattern> &patterns,
                         const std::vector<double> &demandWidths, std::size_t period,
                         std::size_t at, int occurMin, std::vector<int> &counters) {
  for (std::size_t n = 0; n < patterns.size() && counters[at] < occurMin; ++n) {
    if (patterns[n].inModel[period] == 0 && literalHolds(patterns[n], demandWidths[at])) {
      patterns[n].inModel[period] = 1;
      literalCount(patterns[n], demandWidths, counters);
    }
  }
}

// Marks the patterns, and returns the lines.
inline std::string literalReport(std::vector<LiteralPattern> &patterns, double deckleWidth,
                                 const std::vector<double> &demandWidths, std::size_t periods,
                                 int occurMin) {
  std::string lines;
  for (std::size_t period = 0; period < periods; ++period) {
    std::vector<int> counters(demandWidths.size(), 0);
    for (LiteralPattern &pattern : patterns) {
      if (pattern.xValues[period] > 0.0) {
        pattern.inModel[period] = 1;
        literalCount(pattern, demandWidths, counters);
      }
    }
    for (std::size_t at = 0; at < demandWidths.size(); ++at) {
      literalTopUp(patterns, demandWidths, period, at, occurMin, counters);
    }
    for (std::size_t at = 0; at < demandWidths.size(); ++at) {
      if (counters[at] < occurMin) {
        lines += "Deckle Width: " + fixed(deckleWidth, 3) +
                 ", Demand Width: " + fixed(demandWidths[at], 3) + " is in " +
                 std::to_string(counters[at]) + " patterns.\n";
      }
    }
  }
  return lines;
}

}  // namespace corvane::support
