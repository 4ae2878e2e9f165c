#pragma once

#include <functional>
#include <limits>
#include <vector>

#include "network/network.h"
#include "plan/cutter_menu.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// Patterns that make the plan better, by column generation on the network itself (Gilmore and
// Gomory, "A linear programming approach to the cutting-stock problem", Operations Research 9,
// 1961; the bound after L. Lasdon, "Optimization theory for large systems", 1970, chapter 3).
//
// The compact LP is solved with the patterns that there are, for the least unmet demand first and
// then for the least cost at that. In each step its duals price new patterns for every cutter and
// period, exactly; the best ones go in, until none improves. Then no pattern of at most `limit`
// rolls on these deckles can lessen unmet demand, and at the least of it none can make the plan
// cheaper. Before these two steps patterns are generated in the same way for unmet demand and cost
// as one sum, by the file's undercost: that finds nearly all that either step needs, where unmet
// demand alone asks for patterns that are too dear.

struct ImproveOptions {
  int limit = 5;       // rolls in a pattern
  double seconds = 0;  // from the start; no further round begins after them. 0: no limit
};

struct ImproveReport {
  int rounds = 0;
  int patterns = 0;  // that were added
  // Rolls, weighted by undercost in units of the highest one, within reach; and money. Not a number
  // until they are known: those at the start, those reached, and what no patterns can go below.
  // Where time ends the search for the least unmet demand the cost is not a number.
  double firstUnmet = std::numeric_limits<double>::quiet_NaN();
  double firstCost = std::numeric_limits<double>::quiet_NaN();
  double unmet = std::numeric_limits<double>::quiet_NaN();
  double cost = std::numeric_limits<double>::quiet_NaN();
  double unmetBound = 0;
  double costBound = -std::numeric_limits<double>::infinity();
  // Nothing improves any more: the bounds are reached, as far as numbers are exact.
  bool isComplete = false;
};

using ImproveProgress = std::function<void(const ImproveReport &report)>;

// Adds patterns to the network and the problem, which must belong together. `exactMenus` are the
// cutters' menus where widths are known better than in the file; empty: those of the network. The
// progress is called after every round.
ImproveReport improvePatterns(Network &network, PlanProblem &problem,
                              const std::vector<CutterMenu> &exactMenus,
                              const ImproveOptions &options, const ImproveProgress &progress);

}  // namespace corvane::plan
