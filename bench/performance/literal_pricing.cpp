// Takes the place of the program's pricing in the plain run: an executable that defines these takes
// nothing of them from the library.

#include <algorithm>
#include <vector>

#include "generation/price_list.h"
#include "generation/pricing.h"
#include "support/literal_pricing.h"

namespace corvane {

namespace {

// The entries of the list that was rebuilt last; a run has one.
std::vector<support::LiteralPrice> literalPrices;

}  // namespace

void PriceList::rebuild(const std::vector<double> &widths, const std::vector<double> &duals) {
  literalPrices = support::literalPriceList(widths, duals);
}

bool priceCandidate(double deckleWidth, const PriceList & /*prices*/, const PricingLimits &limits,
                    PatternRandom &random, Candidate &candidate) {
  support::LiteralRandom literal;
  literal.state = random.state();
  literal.low = random.low();
  literal.high = random.high();
  support::LiteralCandidate made;
  made.trim = deckleWidth;
  const bool found = support::literalPrice(deckleWidth, literalPrices, limits.attempts,
                                           limits.widths, literal, made);
  random.seed(literal.state);
  candidate.count = static_cast<int>(made.widths.size());
  std::copy(made.widths.begin(), made.widths.end(), candidate.widths.begin());
  candidate.trim = made.trim;
  return found;
}

void setPickRange(int widthCount, double percentage, PatternRandom &random) {
  constexpr int kLeast = 15;
  const int share = static_cast<int>(widthCount * (percentage / 100.0));
  if (widthCount > 0) {
    random.setRange(0, static_cast<quint32>(std::min(std::max(share, kLeast), widthCount)) - 1U);
  }
}

}  // namespace corvane
