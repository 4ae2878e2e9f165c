#pragma once

#include <span>
#include <vector>

#include "plan/reel_search.h"

namespace corvane::plan {

// Where rolls go while reels come and go, always at the least cost. With the reels fixed the
// compact LP is a network: rows of stores, orders and splits are its nodes, and the columns that
// are not reels are arcs between two of them, or between one and a root, which takes surplus and
// gives what is unmet. Rolls more or fewer at a node are sent along shortest paths of the residual
// network, which keeps the flow one of least cost (R. Busacker, P. Gowen, "A procedure for
// determining a family of minimum-cost network flow patterns", 1960).
//
// An undelivered roll costs its weight times a penalty, beside money.
class RollFlow {
 public:
  // Nothing is made and all demand is unmet. The space is REQUIRED to outlive this.
  RollFlow(const ReelSpace &space, double penalty);

  // The same with another penalty: again nothing is made.
  void restart(double penalty);

  double cost() const { return cost_; }  // of all arcs

  // The rolls of so many reels (a column) come, or go; no more than have come.
  void add(int column, double count);
  void remove(int column, double count);

  // What was added and removed since the last commit() is kept, or undone.
  void commit();
  void rollBack();

  // A lower bound of what the cost grows by when a reel of `more` comes and one of `less` goes (-1:
  // none). The cost is convex in the rolls, so any dual values of the flow give one; of each part
  // of the network the greater of two is taken. REQUIRES that nothing is uncommitted.
  double boundOfSwap(int more, int less);

  // The values of the columns that are arcs.
  void write(std::vector<double> &values) const;

 private:
  struct Arc {
    int from = 0;
    int to = 0;
    int column = 0;
    double cost = 0;
    double most = 0;
    double flow = 0;
  };
  struct Step {
    int arc;
    double change;
  };
  // An arc as one of its nodes sees it.
  struct End {
    int arc;
    bool isTail;
  };
  enum class Way { kToRoot, kFromRoot };

  void addArcs();
  void listEnds();
  void findParts();
  std::span<const End> endsOf(int node) const;
  int otherNode(const End &end) const;
  // What more can go along the arc towards `end`'s other node, or from it, and at what cost each.
  double room(const End &end, bool outward) const;
  double costOf(const End &end, bool outward) const;

  void send(int node, double rolls, Way way);
  bool findPath(int node, Way way);
  void reach(int node, double distance, const End &end);
  double roomOfPath(int node, double most, Way way) const;
  void push(int node, double rolls, Way way);

  void price(int part);
  void startAtRoot(int part, std::vector<double> &values, Way way);
  void spread(std::vector<double> &values, Way way);
  void priceUnreached(int part);
  void enqueue(int node);
  void addToSums(int reels, double sign);

  const ReelSpace &space_;
  int root_;
  std::vector<Arc> arcs_;
  std::vector<int> endStart_;
  std::vector<End> ends_;
  std::vector<int> partOf_;              // by node
  std::vector<std::vector<int>> parts_;  // nodes that arcs connect without the root
  double cost_ = 0;
  std::vector<Step> journal_;
  std::vector<int> changed_;  // parts, since the last commit

  // Two solutions of the dual by node: the cost of the way to the root, and, less, from it.
  std::vector<double> toRoot_;
  std::vector<double> fromRoot_;
  std::vector<char> isPriced_;  // by part

  // Of a search for a path: by node the distance, how it was reached, and in which search.
  std::vector<double> distance_;
  std::vector<End> reachedBy_;
  std::vector<int> search_;
  std::vector<char> isQueued_;
  std::vector<int> queue_;
  int searches_ = 0;
  int lastNode_ = -1;  // before the root
  End lastEnd_{};

  // Of a bound: by part its two sums, and in which bound.
  std::vector<double> toRootSum_;
  std::vector<double> fromRootSum_;
  std::vector<int> bound_;
  std::vector<int> partsOfBound_;
  int bounds_ = 0;
};

}  // namespace corvane::plan
