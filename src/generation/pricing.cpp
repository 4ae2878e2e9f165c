#include "generation/pricing.h"

#include <algorithm>

#include "generation/pattern_set.h"

namespace corvane {

namespace {

constexpr int kSmallestPickSet = 15;

// Fills the candidate once and returns its reduced cost.
double fillCandidate(double deckleWidth, const PriceList &prices, int widthLimit,
                     PatternRandom &random, Candidate &candidate) {
  double freeWidth = deckleWidth;
  double reducedCost = deckleWidth;
  int count = 0;
  while (count < widthLimit && freeWidth > 0.0) {
    int pick = static_cast<int>(random.draw());
    if (!(freeWidth - prices[pick].width >= 0)) {
      pick = prices.bestFitting(freeWidth);
      if (pick == PriceList::kNone) {
        break;
      }
    }
    const PriceEntry &entry = prices[pick];
    candidate.widths[static_cast<std::size_t>(count++)] = entry.width;
    freeWidth -= entry.width;
    reducedCost -= entry.dual;
  }
  candidate.count = count;
  candidate.trim = freeWidth;
  return reducedCost;
}

// Anything else improves, also a reduced cost that is not a number.
bool improvesNothing(double reducedCost) {
  return (-kPatternTolerance < reducedCost && reducedCost < kPatternTolerance) || reducedCost >= 0;
}

}  // namespace

bool priceCandidate(double deckleWidth, const PriceList &prices, const PricingLimits &limits,
                    PatternRandom &random, Candidate &candidate) {
  candidate.count = 0;
  candidate.trim = deckleWidth;
  // Odd, but relied on: no width is cut from less than nothing, and the empty pattern is an answer.
  if (deckleWidth < 0) {
    return true;
  }
  bool found = false;
  for (int attempt = 0; attempt < limits.attempts && !found; ++attempt) {
    found = !improvesNothing(fillCandidate(deckleWidth, prices, limits.widths, random, candidate));
  }
  return found;
}

void setPickRange(int widthCount, double percentage, PatternRandom &random) {
  if (widthCount == 0) {
    return;
  }
  int size = static_cast<int>(widthCount * (percentage / 100.0));
  if (size < kSmallestPickSet) {
    size = std::min(kSmallestPickSet, widthCount);
  }
  random.setRange(0, static_cast<quint32>(size) - 1U);
}

}  // namespace corvane
