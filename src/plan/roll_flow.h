#pragma once

#include <vector>

#include "plan/roll_network.h"
#include "plan/roll_prices.h"

namespace corvane::plan {

// Where rolls go while reels come and go, always at the least cost. Rolls more or fewer at a node
// are sent along shortest paths of the residual network, which keeps the flow one of least cost
// (R. Busacker, P. Gowen, "A procedure for determining a family of minimum-cost network flow
// patterns", 1960).
class RollFlow {
 public:
  // Nothing is made and all demand is unmet. The space is REQUIRED to outlive this.
  RollFlow(const ReelSpace &space, double penalty);
  RollFlow(const RollFlow &) = delete;
  RollFlow &operator=(const RollFlow &) = delete;
  ~RollFlow() = default;

  // The same with another penalty: again nothing is made.
  void restart(double penalty);

  double cost() const { return network_.cost(); }

  // The rolls of so many reels (a column) come, or go; no more than have come.
  void add(int column, double count);
  void remove(int column, double count);

  // What was added and removed since the last commit() is kept, or undone.
  void commit();
  void rollBack();

  // As RollPrices has it. REQUIRES that nothing is uncommitted.
  double boundOfSwap(int more, int less) { return prices_.boundOfSwap(more, less); }

  // The values of the columns that are arcs.
  void write(std::vector<double> &values) const { network_.write(values); }

 private:
  using End = RollNetwork::End;
  struct Step {
    int arc;
    double change;
  };
  enum class Way { kToRoot, kFromRoot };

  void send(int node, double rolls, Way way);
  bool findPath(int node, Way way);
  void reach(int node, double distance, const End &end);
  double roomOfPath(int node, double most, Way way) const;
  void push(int node, double rolls, Way way);

  RollNetwork network_;
  RollPrices prices_;
  std::vector<Step> journal_;
  std::vector<int> changed_;  // parts, since the last commit

  // Of a search for a path: by node the distance, how it was reached, and in which search.
  std::vector<double> distance_;
  std::vector<End> reachedBy_;
  std::vector<int> search_;
  std::vector<char> isQueued_;
  std::vector<int> queue_;
  int searches_ = 0;
  int lastNode_ = -1;  // before the root
  End lastEnd_{};
};

}  // namespace corvane::plan
