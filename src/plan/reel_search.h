#pragma once

#include <span>
#include <vector>

#include "plan/compact_lp.h"

namespace corvane::plan {

// A plan of whole reels while better ones are looked for: a value for every column of the compact
// LP, and one objective for both steps.
struct ReelPlan {
  std::vector<double> values;
  double objective = 0;
};

// What searches for whole reels share: the compact LP with its columns by row, and the objective.
//
// In the objective a roll that is not delivered costs more than any roll could: more than a reel of
// its own, all surplus but for it, and its freight. So no search trades rolls for money, and all of
// them may work with one number.
class ReelSpace {
 public:
  // Both are REQUIRED to outlive this, and not to grow.
  ReelSpace(const PlanProblem &problem, const CompactLp &lp);

  const PlanProblem &problem() const { return problem_; }
  const CompactLp &lp() const { return lp_; }
  const LinearModel &model() const { return lp_.model(); }
  // By column.
  const std::vector<double> &costs() const { return costs_; }
  const std::vector<int> &reels() const { return reels_; }
  double objectiveOf(const std::vector<double> &values) const;

  // The rows of a column, and the columns of a row, with the values there.
  std::span<const int> rowsOf(int column) const;
  std::span<const double> entriesOf(int column) const;
  std::span<const int> columnsOf(int row) const;

 private:
  void listColumnsByRow();

  const PlanProblem &problem_;
  const CompactLp &lp_;
  std::vector<double> costs_;
  std::vector<int> reels_;
  std::vector<int> rowStart_;
  std::vector<int> rowColumns_;
};

}  // namespace corvane::plan
