#pragma once

#include <vector>

#include "plan/roll_network.h"

namespace corvane::plan {

// What rolls at a node are worth while a flow of least cost stands: two solutions of its dual, the
// cost of the way to the root and, less, that from it, of each part of the network when it is asked
// for. They bound what another reel costs.
class RollPrices {
 public:
  // The network is REQUIRED to outlive this.
  explicit RollPrices(const RollNetwork &network);

  // The flow of a part, or all flow, has changed.
  void forget(int part) { isPriced_[static_cast<std::size_t>(part)] = 0; }
  void forgetAll();

  // A lower bound of what the cost grows by when a reel of `more` comes and one of `less` goes
  // (columns; -1: none). The cost is convex in the rolls, so any dual values of the flow give one;
  // of each part of the network the greater of two is taken. REQUIRES a flow of least cost.
  double boundOfSwap(int more, int less);

 private:
  void price(int part);
  void startAtRoot(int part, std::vector<double> &values, bool outward);
  void spread(std::vector<double> &values, bool outward);
  void priceUnreached(int part);
  double leastToRoot(int node, bool outward) const;
  void enqueue(int node);
  void addToSums(int reels, double sign);

  const RollNetwork &network_;
  std::vector<double> toRoot_;  // by node
  std::vector<double> fromRoot_;
  std::vector<char> isPriced_;  // by part

  // Nodes whose value is still to be told to their neighbours.
  std::vector<int> queue_;
  std::vector<char> isQueued_;

  // Of a bound: by part its two sums, and in which bound.
  std::vector<double> toRootSum_;
  std::vector<double> fromRootSum_;
  std::vector<int> bound_;
  std::vector<int> partsOfBound_;
  int bounds_ = 0;
};

}  // namespace corvane::plan
