#pragma once

#include <span>
#include <vector>

#include "plan/compact_lp.h"

namespace corvane::plan {

// A plan of whole reels while better ones are looked for: a value for every column of the compact
// LP, and what it comes to.
struct ReelPlan {
  std::vector<double> values;
  double unmet = 0;  // rolls that are not delivered, in units of the highest undercost
  double cost = 0;   // money, without what is unmet
};

// Rolls, and money, that a solver's tolerances may leave: these, and this part of a whole plan's.
inline constexpr double kLeastRolls = 1e-4;
inline constexpr double kLeastGain = 1e-4;
inline constexpr double kNoisePart = 1e-9;

// Whether the plan leaves less undelivered, or as much and costs less; both by more than noise. The
// two are compared one after the other and never added up: what it takes to deliver one roll more
// (another way for many rolls, a reel of nothing but surplus) has no bound that a weight could
// keep.
bool isBetter(const ReelPlan &plan, const ReelPlan &other);

// What searches for whole reels share: the compact LP with its columns by row, and both objectives.
class ReelSpace {
 public:
  // Both are REQUIRED to outlive this, and not to grow.
  ReelSpace(const PlanProblem &problem, const CompactLp &lp);

  const PlanProblem &problem() const { return problem_; }
  const CompactLp &lp() const { return lp_; }
  const LinearModel &model() const { return lp_.model(); }
  const std::vector<int> &reels() const { return reels_; }

  // By column: money; 0 for unmet rolls.
  const std::vector<double> &costs() const { return lp_.model().cost; }
  // By column: the weight of unmet rolls; 0 for all others.
  const std::vector<double> &unmetWeights() const { return unmetWeights_; }

  // The plan of these values, with its figures.
  ReelPlan planOf(std::vector<double> values) const;

  // The rows of a column, and the columns of a row, with the values there.
  std::span<const int> rowsOf(int column) const;
  std::span<const double> entriesOf(int column) const;
  std::span<const int> columnsOf(int row) const;

 private:
  void listColumnsByRow();

  const PlanProblem &problem_;
  const CompactLp &lp_;
  std::vector<double> unmetWeights_;
  std::vector<int> reels_;
  std::vector<int> rowStart_;
  std::vector<int> rowColumns_;
};

}  // namespace corvane::plan
