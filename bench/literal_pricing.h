#pragma once

#include <vector>

#include "generation/pattern.h"
#include "generation/pattern_random.h"
#include "generation/price_list.h"
#include "generation/pricing.h"

namespace corvane::bench {

// Pricing as it is described, without any shortcut: every attempt fills the widths of a pattern and
// sorts them, whatever comes of it, and a drawn width that does not fit leads to a scan of the
// whole price list. The measure of the pricing of the program, which must make the same draws and
// picks.
class LiteralPricing {
 public:
  void rebuild(const std::vector<double> &widths, const double *duals);

  // As priceCandidate; the candidate holds its widths in descending order.
  bool price(double deckleWidth, const PricingLimits &limits, PatternRandom &random,
             Candidate &candidate) const;

 private:
  double fill(Pattern &pattern, double deckleWidth, int widthLimit, PatternRandom &random) const;
  int scanForFitting(double freeWidth) const;

  std::vector<PriceEntry> entries_;
};

}  // namespace corvane::bench
