#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "plan/linear_solver.h"
#include "plan/roll_flow.h"

namespace corvane::plan {

struct AnnealOptions {
  double moves = 1e6;  // that are looked at
  // The temperature at the beginning, in what a roll of surplus costs on average. It falls to a
  // small part of that.
  double heat = 0.1;
  unsigned seed = 1;
};

// Makes a plan of whole reels better by simulated annealing (S. Kirkpatrick, C. Gelatt, M. Vecchi,
// "Optimization by simulated annealing", 1983). A move puts a reel of another pattern of the grade,
// in the same period or one beside it, in the place of one, or adds or drops one; what it costs is
// exact, by the flow of the rolls, and most moves are refused by a bound of that alone. It serves
// where patterns run for few reels each: there a linear programme says little of whole ones.
//
// An undelivered roll is cheap at first, so that the plan can pass through what delivers less, and
// dear at the end.
class ReelAnneal {
 public:
  // Patterns of small reduced costs in `optimum`, which solves the LP, are tried most. Both are
  // REQUIRED to outlive this.
  ReelAnneal(const ReelSpace &space, const LinearSolution &optimum);

  // The best plan at the end of a run that starts from this one; it may be worse. The same
  // arguments give the same plan, unless `isOver` says that it is to end.
  ReelPlan run(const ReelPlan &start, const AnnealOptions &options,
               const std::function<bool()> &isOver);

 private:
  struct Move {
    int more = -1;  // a column of reels, -1: none
    int less = -1;
    std::size_t unit = 0;  // of `less` in `units_`
  };

  void groupColumns(const LinearSolution &optimum);
  void findSurplusCost();
  void take(const std::vector<double> &reels);
  void rebuild(double penalty);
  std::size_t below(std::size_t count);
  double chance();
  Move propose();
  bool hasTime(const Move &move) const;
  void count(const Move &move, int sign);
  void tryMove(const Move &move, double most);
  void keepBest();
  double cost() const { return reelCost_ + flow_.cost(); }

  const ReelSpace &space_;
  RollFlow flow_;
  double surplusCost_ = 0;  // of a roll, on average
  // Columns of one grade and period, the least reduced cost first; the groups that a reel of each
  // may move to; and the group of a column.
  std::vector<std::vector<int>> groups_;
  std::vector<std::vector<int>> near_;
  std::vector<int> groupOf_;

  std::mt19937 random_;
  std::vector<int> units_;      // the column of every reel
  std::vector<double> counts_;  // reels by column
  std::vector<double> days_;    // used, by row of a machine
  double reelCost_ = 0;
  double bestCost_ = 0;
  std::vector<double> best_;  // reels by column
};

}  // namespace corvane::plan
