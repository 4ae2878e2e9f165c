#pragma once

#include <array>

#include "generation/pattern_random.h"
#include "generation/price_list.h"

namespace corvane {

// Pricing: patterns of negative reduced cost, built at random.
//
// A pattern for deckle width D that cuts width i a_i times costs D and earns the dual values y_i of
// the rows it serves; its reduced cost is v = D - sum a_i y_i, and it improves the master LP when v
// is negative. Instead of the knapsack problem (max sum a_i y_i, sum a_i w_i <= D) of column
// generation after P. C. Gilmore and R. E. Gomory, "A Linear Programming Approach to the
// Cutting-Stock Problem", Operations Research 9 (1961), widths are drawn at random from the front
// of the price list, where they earn most per inch.

// The most widths that any pattern may hold.
inline constexpr int kMostWidthsInPattern = 10;

// A pattern in the making.
struct Candidate {
  std::array<double, kMostWidthsInPattern> widths{};  // in the order of the picks
  int count = 0;
  double trim = 0;  // the width left, inches
};

struct PricingLimits {
  int attempts;  // tries a candidate
  int widths;    // widths in a pattern, at most kMostWidthsInPattern
};

// Tries to build a pattern of negative reduced cost; false when every attempt failed, and the
// candidate then holds nothing of use. Draws from the generator, whose range must lie within the
// price list. For a negative deckle width it answers true at once, with no widths and no draw.
bool priceCandidate(double deckleWidth, const PriceList &prices, const PricingLimits &limits,
                    PatternRandom &random, Candidate &candidate);

// Sets the range of draws to the first `percentage` percent of the widths (truncated), but to at
// least 15 widths, or all if there are fewer. Does nothing for no widths.
void setPickRange(int widthCount, double percentage, PatternRandom &random);

}  // namespace corvane
