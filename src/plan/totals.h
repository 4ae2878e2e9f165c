#pragma once

#include "network/network.h"
#include "plan/plan.h"

namespace corvane::plan {

// Money by what it is for.
struct CostByKind {
  double feed = 0.0;         // of reels that enter a pattern
  double waste = 0.0;        // of trim
  double freight = 0.0;      // of rolls on their way
  double machineTime = 0.0;  // of days
  double surplus = 0.0;      // of rolls that nobody ordered

  double total() const { return feed + waste + freight + machineTime + surplus; }
};

struct Totals {
  double reels = 0.0;
  double orderedRolls = 0.0;
  double orderedInches = 0.0;
  double deliveredRolls = 0.0;
  double deliveredInches = 0.0;
  double unmetRolls = 0.0;
  double unmetInches = 0.0;
  double unmetOutOfReach = 0.0;  // rolls of them
  double deckleInches = 0.0;     // of paper: reels times the width of their deckle
  double trimInches = 0.0;
  double surplusRolls = 0.0;
  double surplusInches = 0.0;
  double shortageCost = 0.0;  // undercost of the unmet rolls; no part of the cost
  CostByKind cost;

  // Trim and surplus of the paper, in percent; 0 where there is no paper.
  double trimPercent() const;
};

Totals sumUp(const Network &network, const PlanProblem &problem, const Plan &plan);

}  // namespace corvane::plan
