#pragma once

#include <vector>

#include "plan/compact_lp.h"
#include "plan/cutter_menu.h"

namespace corvane::plan {

// Pricing of patterns on the network.
//
// A reel of cutter c in period t that slits n_s rolls of width w_s for every store s costs
//
//   base + waste x (deckle - sum w_s n_s),    base: feed, and the machine's time at its cost
//
// and takes 1 / capacity days of its machine. With the duals of the compact LP, mu <= 0 of the
// machine's row and pi_s of the stores' rows, its reduced cost is
//
//   base + waste x deckle - mu / capacity - sum (pi_s + waste x w_s) n_s
//
// The cut of the largest sum, at most so many rolls within the deckle, has the least reduced cost;
// see pattern_pricing.h. In the step that looks at unmet demand alone base and waste are 0.

enum class PlanStep { kUnmet, kCost };

struct PricedPattern {
  NewPattern pattern;
  double reducedCost = 0;  // below 0
};

struct PricingRound {
  // Those that improve the LP: of every cutter and period the best and the others asked for, each
  // once.
  std::vector<PricedPattern> patterns;
  // What the optimum may at most fall by, whatever patterns are added: the Lagrangian bound of the
  // machine rows. No machine runs for longer than its days, and every day is worth no more than
  // that of the cutter that could earn most.
  double mostGain = 0;
};

// Patterns are priced on these.
struct PricingBase {
  const Network &network;
  const PlanProblem &problem;
  const CompactLp &lp;
  const std::vector<CutterMenu> &menus;
  int limit = 0;  // rolls in a pattern
};

// The best patterns under dual values of the LP's rows. `disjoint`: how many patterns are looked
// for of each cutter and period; each after the first is the best without the widths of those
// before it, so that they serve other orders together (A. Ghoniem and H. Sherali, "Complementary
// column generation and bounding approaches for set partitioning formulations", Optimization
// Letters 3, 2009).
PricingRound pricePatterns(const PricingBase &base, const std::vector<double> &duals, PlanStep step,
                           int disjoint);

// The trim of a pattern as an import file would tell it: six digits of it, and none where it is the
// noise of subtractions. Inches.
double writtenTrim(double trim);

}  // namespace corvane::plan
