#pragma once

#include <string>
#include <vector>

#include "plan/linear_model.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// The linear programme of a plan, in few rows:
//
//   x(p, t)       reels of pattern p in period t
//   ship(r, t)    rolls that leave by route r in t, where they arrive in time at a demand
//   surplus(s, t) rolls at store s that nobody ordered
//   stock(s, t)   rolls that stay at s until the next period, where that is allowed
//   unmet(o, t)   rolls of order o that are not delivered
//
//   machine (m, t)  sum over p of x / capacity             <= days
//   store   (s, t)  sum of yields x + stock(t - 1) - stock(t) - ships - surplus = 0
//   order   (o, t)  sum of ships arriving in t + unmet     =  demand
//   split   (p, width, t)  rolls x - sum over stores of its rolls there = 0, where there are
//   several
//
// Demand that is out of reach whatever is planned stays outside, and so do stores without patterns
// and their routes.

enum class ColumnKind { kReels, kShip, kSurplus, kStock, kUnmet, kSplit };
enum class RowKind { kMachine, kStore, kOrder, kSplit };

// What a column stands for: `what` is the pattern, route, store or order; of a split the pattern.
struct ColumnRole {
  ColumnKind kind{};
  Index what = kNone;
  Index period = 0;
  Index yield = 0;  // of a split: the pattern's yield, and which of its stores
  Index store = 0;
};

struct RowRole {
  RowKind kind{};
  Index what = kNone;
  Index period = 0;
  Index yield = 0;
};

class CompactLp {
 public:
  explicit CompactLp(const PlanProblem &problem);

  // The columns of a pattern that was added to the problem, one for each period that it can run in.
  // REQUIRES: its stores had patterns when this was made, as stores without have no rows.
  void addPattern(const PlanProblem &problem, Index pattern);

  const LinearModel &model() const { return model_; }
  LinearModel &model() { return model_; }
  const ColumnRole &column(int column) const { return columns_[static_cast<std::size_t>(column)]; }
  const RowRole &row(int row) const { return rows_[static_cast<std::size_t>(row)]; }

  // -1 where there is none.
  int machineRow(Index machine, std::size_t period) const {
    return at(machineRows_, machine, period);
  }
  int storeRow(Index store, std::size_t period) const { return at(storeRows_, store, period); }
  int orderRow(Index order, std::size_t period) const { return at(orderRows_, order, period); }
  int unmetColumn(Index order, std::size_t period) const { return at(unmet_, order, period); }
  // By pattern and period, in the order of PlanProblem::patterns.
  int reelsColumn(Index pattern, std::size_t period) const { return at(reels_, pattern, period); }

  // The basis of the plan that makes nothing: all demand is unmet. It is feasible.
  Basis idleBasis() const;

  // The objective of the first step: undercost by column in units of the highest one.
  const std::vector<int> &unmetColumns() const { return unmetColumns_; }
  double unmetWeight(const PlanProblem &problem, int column) const;

 private:
  int at(const std::vector<int> &table, Index what, std::size_t period) const {
    return table[what * periods_ + period];
  }
  int addRow(RowRole role, double low, double high);
  int addColumn(ColumnRole role, double cost, double high, const std::vector<Entry> &entries);
  void addRows(const PlanProblem &problem);
  void addReels(const PlanProblem &problem, Index index, std::size_t period);
  void addSplit(const PlanProblem &problem, const RowRole &row, int number);
  void addShips(const PlanProblem &problem);
  void addSurplusAndStock(const PlanProblem &problem);
  void addUnmet(const PlanProblem &problem);

  std::size_t periods_ = 0;
  LinearModel model_;
  std::vector<ColumnRole> columns_;
  std::vector<RowRole> rows_;
  std::vector<int> machineRows_;
  std::vector<int> storeRows_;
  std::vector<int> orderRows_;
  std::vector<int> reels_;
  std::vector<int> unmet_;
  std::vector<int> unmetColumns_;
};

// Names of the columns for other programs: "reels_12_0" of the pattern 12 of the problem in its
// first period.
std::vector<std::string> columnNames(const CompactLp &lp);

}  // namespace corvane::plan
