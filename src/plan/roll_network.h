#pragma once

#include <span>
#include <vector>

#include "plan/reel_search.h"

namespace corvane::plan {

// The compact LP while its reels are fixed: rows of stores, orders and splits are nodes, and the
// columns that are not reels are arcs between two of them, or between one and a root, which takes
// surplus and gives what is unmet. An undelivered roll costs its weight times a penalty, beside
// money.
class RollNetwork {
 public:
  // Of rolls; less is noise.
  static constexpr double kNoRolls = 1e-9;
  // Money that is noise where costs along paths are compared.
  static constexpr double kNoMoney = 1e-7;

  // An arc as one of its nodes sees it.
  struct End {
    int arc;
    bool isTail;
  };

  // Without flow until restart(). The space is REQUIRED to outlive this.
  explicit RollNetwork(const ReelSpace &space);

  // Nothing is made and all demand is unmet, at this penalty.
  void restart(double penalty);

  const ReelSpace &space() const { return space_; }
  int root() const { return root_; }     // the last node
  double cost() const { return cost_; }  // of all arcs

  std::span<const End> endsOf(int node) const;
  int nodeOf(const End &end) const;
  int otherNode(const End &end) const;
  // What more can go along the arc towards `end`'s other node, or from it, and at what cost each.
  double room(const End &end, bool outward) const;
  double costOf(const End &end, bool outward) const;

  // Rolls more (or fewer, below 0) go along the arc.
  void change(int arc, double rolls);

  // Nodes that arcs connect without the root, by part; and the part of a node other than the root.
  const std::vector<std::vector<int>> &parts() const { return parts_; }
  int partOf(int node) const { return partOf_[static_cast<std::size_t>(node)]; }

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

  void addArcs();
  void listEnds();
  void findParts();

  const ReelSpace &space_;
  int root_;
  std::vector<Arc> arcs_;
  std::vector<int> endStart_;  // by node, and one more
  std::vector<End> ends_;
  std::vector<int> partOf_;
  std::vector<std::vector<int>> parts_;
  double cost_ = 0;
};

// Searches for paths spend their time in these.

inline std::span<const RollNetwork::End> RollNetwork::endsOf(int node) const {
  const auto at = static_cast<std::size_t>(node);
  return {ends_.data() + endStart_[at], ends_.data() + endStart_[at + 1]};
}

inline int RollNetwork::nodeOf(const End &end) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail ? arc.from : arc.to;
}

inline int RollNetwork::otherNode(const End &end) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail ? arc.to : arc.from;
}

inline double RollNetwork::room(const End &end, bool outward) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail == outward ? arc.most - arc.flow : arc.flow;
}

inline double RollNetwork::costOf(const End &end, bool outward) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail == outward ? arc.cost : -arc.cost;
}

}  // namespace corvane::plan
