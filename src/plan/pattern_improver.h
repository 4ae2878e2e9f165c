#pragma once

#include <functional>
#include <limits>
#include <vector>

#include "network/network.h"
#include "plan/compact_lp.h"
#include "plan/cutter_menu.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// Patterns that make the plan better, by column generation on the network itself (Gilmore and
// Gomory, "A linear programming approach to the cutting-stock problem", Operations Research 9,
// 1961; the bound after L. Lasdon, "Optimization theory for large systems", 1970, chapter 3).
//
// The compact LP is solved with the patterns that there are, for unmet demand and cost as one sum,
// with unmet rolls at the file's undercost. Its duals price new patterns for every cutter and
// period, exactly; the best ones go in, until none improves. Where rolls stay unmet, the same is
// done for unmet demand alone: when that cannot be lessened either, the sum's optimum is the least
// cost at the least unmet demand, and else the sum is taken anew with unmet rolls at more. Then no
// pattern of at most `limit` rolls on these deckles can lessen unmet demand, and at the least of it
// none can make the plan cheaper. (Unmet demand alone, to begin with, would ask for patterns that
// are too dear; cost with a row that holds unmet demand at its least has other dual values
// than the sum, so that it begins pricing anew.)

struct ImproveOptions {
  int limit = 5;       // rolls in a pattern
  double seconds = 0;  // from the start; no further round begins after them. 0: no limit
  // Seconds since any moment; a steady clock where it is empty.
  std::function<double()> clock = {};
};

struct ImproveReport {
  int rounds = 0;
  int patterns = 0;  // that were added
  // Rolls, weighted by undercost in units of the highest one, within reach; and money. Not a number
  // until they are known: those at the start, those reached, and what no patterns can go below; the
  // cost with no more rolls unmet than those reached.
  double firstUnmet = std::numeric_limits<double>::quiet_NaN();
  double firstCost = std::numeric_limits<double>::quiet_NaN();
  double unmet = std::numeric_limits<double>::quiet_NaN();
  double cost = std::numeric_limits<double>::quiet_NaN();
  double unmetBound = 0;
  double costBound = -std::numeric_limits<double>::infinity();
  // Nothing improves any more: the bounds are reached, as far as numbers are exact.
  bool isComplete = false;
  // Time ended it; else, where it is not complete, what rounding hides.
  bool isTimeUp = false;
};

struct Improvement {
  ImproveReport report;
  CompactLp lp;  // of the problem with its new patterns
  Basis basis;   // that the plan's solver may begin from
};

using ImproveProgress = std::function<void(const ImproveReport &report)>;

// Adds patterns to the network and the problem, which must belong together. `exactMenus` are the
// cutters' menus where widths are known better than in the file; empty: those of the network. The
// progress is called after every round.
Improvement improvePatterns(Network &network, PlanProblem &problem,
                            const std::vector<CutterMenu> &exactMenus,
                            const ImproveOptions &options, const ImproveProgress &progress);

}  // namespace corvane::plan
