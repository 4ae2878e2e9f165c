#pragma once

#include <functional>
#include <optional>
#include <string>

#include "plan/reel_search.h"

namespace corvane::plan {

// Plans of whole reels. Reels are whole in patterns only, for with them fixed the rest is a
// network, whose vertices are whole.
//
// Less unmet demand goes before less cost in all that follows; the two are never added up.
//
//   1. A first plan by diving (reel_dive.h), within seconds.
//   2. Up to kDirectReels whole columns: CBC on the whole model, with a small tree.
//   3. Beyond, or where that does not end: annealing (reel_anneal.h), hot at first and then cooler,
//      always from the best plan. It gains most where patterns run for few reels each.
//   4. Then neighbourhoods (reel_neighbourhood.h), one grade in one period after another, then the
//      machines in a period, grades in windows of two periods; where these make nothing better,
//      grades in three periods and in all, and whole periods. Each has the reels that the plan has,
//      those of the LP, and those of the least reduced costs. A part in which nothing was found is
//      not searched again before it changes. Where a round makes nothing better the neighbourhoods
//      grow, until the gap is reached, the time is up, or they have grown for nothing; then once
//      more with cutting planes.
//   5. Up to kDirectReels again CBC on the whole model, with a large tree.
//
// Searches end by numbers of moves or nodes. So a run that the clock does not end is the same every
// time; one that it ends may differ.

struct WholeReelOptions {
  double seconds = 60;  // from the start; 0: no limit
  // To the LP's cost; no search goes on below it where less than a roll of the highest undercost is
  // unmet that the LP delivers.
  double gap = 0;
};

struct WholeReels {
  ReelPlan plan;  // its reels; the rest is best solved again
  // "direct", "dive", "annealing" or "neighbourhoods", with "ended by time" where it was.
  std::string way;
};

// Told of every better plan: the weighted rolls that it leaves unmet beside those of the LP, and
// how much more it costs, relative.
using WholeReelProgress = std::function<void(const std::string &way, double rolls, double gap)>;

inline constexpr std::size_t kDirectReels = 500;

// `optimum` solves the LP in two steps: its objective bounds the plan's, its reduced costs choose
// reels. Nothing when the time was up before there was a plan.
std::optional<WholeReels> planWholeReels(const ReelSpace &space, const LinearSolution &optimum,
                                         const WholeReelOptions &options,
                                         const WholeReelProgress &progress);

}  // namespace corvane::plan
