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

// An equal seed may stand in the set from an earlier period; then this one is not kept.
void seedPattern(double width, double deckleWidth, PatternCompPattern *set) {
  auto pattern = std::make_unique<Pattern>(deckleWidth - width);
  pattern->widths.append(width);
  if (set != nullptr && set->patterns->insert(pattern.get()) == skipList<Pattern>::kStored) {
    (void)pattern.release();
  }
}

}  // namespace

void buildMasterLp(const std::vector<double> &widths, const std::vector<DemandEntry> &demands,
                   double smallestDeckleWidth, const std::vector<PatternCompPattern *> &gradeSets,
                   PatternSets &sets, LpArrays &lp, std::ostream &log) {
  const std::size_t rows = widths.size();
  PatternCompPattern *set = findSet(gradeSets, smallestDeckleWidth);
  lp.allocateObjective(rows, smallestDeckleWidth, log);
  lp.allocateSenses(rows, log);
  lp.allocateMatrix(rows, rows, log);
  for (std::size_t row = 0; row < rows; ++row) {
    lp.starts[row] = static_cast<int>(row);
    lp.counts[row] = 1;
    lp.indices[row] = static_cast<int>(row);
    lp.values[row] = 1.0;
    seedPattern(widths[row], smallestDeckleWidth, set);
    ++sets.totalPatterns;
  }
  lp.allocateBounds(rows, log);
  lp.allocateRightHandSides(rows, log);
  for (std::size_t row = 0; row < std::min(rows, demands.size()); ++row) {
    lp.rightHandSides[row] = static_cast<double>(demands[row].quantity);
  }
}

}  // namespace corvane
