#include "generation/master_lp.h"

#include <algorithm>
#include <memory>

namespace corvane {

namespace {

PatternCompPattern *findSet(const std::vector<PatternCompPattern *> &gradeSets,
                            double deckleWidth) {
  const auto set = std::find_if(gradeSets.begin(), gradeSets.end(),
                                [deckleWidth](const PatternCompPattern *candidate) {
                                  return candidate->deckleWidth == deckleWidth;
                                });
  return set != gradeSets.end() ? *set : nullptr;
}

}  // namespace

LpProblem buildMasterLp(const QString &grade, const std::vector<double> &widths,
                        const std::vector<DemandEntry> &demands, double smallestDeckleWidth,
                        PatternSets &sets, std::ostream &log) {
  const std::size_t rows = widths.size();
  PatternCompPattern *set = findSet(sets.ofGrade(grade), smallestDeckleWidth);
  LpProblem lp(rows, rows, rows, log);
  for (const double width : widths) {
    auto seed = std::make_unique<Pattern>(smallestDeckleWidth - width);
    seed->widths.append(width);
    lp.columns.append(smallestDeckleWidth, seed->widths, widths);
    // An equal seed may stand in the set from an earlier period; then this one is not kept.
    if (set != nullptr && set->patterns->insert(seed.get()) == skipList<Pattern>::kStored) {
      (void)seed.release();
    }
    ++sets.totalPatterns;
  }
  for (std::size_t row = 0; row < std::min(rows, demands.size()); ++row) {
    lp.rightHandSides[row] = static_cast<double>(demands[row].quantity);
  }
  return lp;
}

}  // namespace corvane
