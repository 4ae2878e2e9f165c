#include "literal_pricing.h"

#include <algorithm>

#include "core/exchange_sort.h"
#include "generation/pattern_set.h"

namespace corvane::bench {

namespace {

// The generator with constants that the compiler does not know.
struct GeneratorConstants {
  quint32 multiplier = PatternRandom::kMultiplier;
  quint32 increment = PatternRandom::kIncrement;
  quint32 modulus = PatternRandom::kModulus;
};
volatile GeneratorConstants constants;

quint32 drawIndex(PatternRandom &random) {
  const quint32 modulus = constants.modulus;
  const quint32 state = (constants.multiplier * random.state() + constants.increment) % modulus;
  random.seed(state);
  return random.low() + (random.high() - random.low() + 1U) * state / modulus;
}

}  // namespace

void LiteralPricing::rebuild(const std::vector<double> &widths, const double *duals) {
  entries_.clear();
  for (std::size_t row = 0; row < widths.size(); ++row) {
    entries_.push_back(
        {widths[row], duals[row], widths[row] == 0.0 ? 0.0 : duals[row] / widths[row]});
  }
  exchangeSort(entries_,
               [](const PriceEntry &a, const PriceEntry &b) { return b.ratio > a.ratio; });
}

bool LiteralPricing::price(double deckleWidth, const PricingLimits &limits, PatternRandom &random,
                           Candidate &candidate) const {
  Pattern pattern(deckleWidth);
  bool found = deckleWidth < 0;
  for (int attempt = 0; attempt < limits.attempts && !found; ++attempt) {
    const double value = fill(pattern, deckleWidth, limits.widths, random);
    sortWidthsDescending(pattern);
    found = !((-kPatternTolerance < value && value < kPatternTolerance) || value >= 0);
  }
  candidate.count = 0;
  for (const double width : pattern.widths) {
    candidate.widths[static_cast<std::size_t>(candidate.count++)] = width;
  }
  candidate.trim = pattern.trim;
  return found;
}

// One attempt; returns the reduced cost.
double LiteralPricing::fill(Pattern &pattern, double deckleWidth, int widthLimit,
                            PatternRandom &random) const {
  while (!pattern.widths.isEmpty()) {
    pattern.widths.removeLast();
  }
  pattern.trim = deckleWidth;
  double value = deckleWidth;
  for (int count = 0; count < widthLimit && pattern.trim > 0.0; ++count) {
    int pick = static_cast<int>(drawIndex(random));
    if (!(pattern.trim - entries_[static_cast<std::size_t>(pick)].width >= 0)) {
      pick = scanForFitting(pattern.trim);
      if (pick < 0) {
        break;
      }
    }
    const PriceEntry &entry = entries_[static_cast<std::size_t>(pick)];
    pattern.widths.append(entry.width);
    pattern.trim -= entry.width;
    value -= entry.dual;
  }
  return value;
}

int LiteralPricing::scanForFitting(double freeWidth) const {
  double best = 0.0;
  int choice = -1;
  for (std::size_t at = 0; at < entries_.size(); ++at) {
    if (entries_[at].width <= freeWidth && !(entries_[at].dual < best)) {
      choice = static_cast<int>(at);
      best = entries_[at].dual;
    }
  }
  return choice;
}

}  // namespace corvane::bench
