#include "plan/roll_prices.h"

#include <algorithm>
#include <numeric>

namespace corvane::plan {

RollPrices::RollPrices(const RollNetwork &network) : network_(network) {
  const auto nodes = static_cast<std::size_t>(network.root()) + 1;
  toRoot_.resize(nodes);
  fromRoot_.resize(nodes);
  isQueued_.resize(nodes);
  const std::size_t parts = network.parts().size();
  toRootSum_.resize(parts);
  fromRootSum_.resize(parts);
  bound_.resize(parts);
  forgetAll();
}

void RollPrices::forgetAll() {
  isPriced_.assign(network_.parts().size(), 0);
}

void RollPrices::price(int part) {
  isPriced_[static_cast<std::size_t>(part)] = 1;
  startAtRoot(part, toRoot_, true);
  spread(toRoot_, false);
  startAtRoot(part, fromRoot_, false);
  spread(fromRoot_, true);
  priceUnreached(part);
}

// The least cost of an arc to the root, or from it, that has room.
double RollPrices::leastToRoot(int node, bool outward) const {
  double least = kInfinite;
  for (const RollNetwork::End &end : network_.endsOf(node)) {
    if (network_.otherNode(end) == network_.root() &&
        network_.room(end, outward) > RollNetwork::kNoRolls) {
      least = std::min(least, network_.costOf(end, outward));
    }
  }
  return least;
}

// The nodes that have an arc to the root, or from it, with its cost.
void RollPrices::startAtRoot(int part, std::vector<double> &values, bool outward) {
  queue_.clear();
  for (const int node : network_.parts()[static_cast<std::size_t>(part)]) {
    double &value = values[static_cast<std::size_t>(node)];
    value = leastToRoot(node, outward);
    if (value < kInfinite) {
      enqueue(node);
    }
  }
}

// From the nodes that have their value to their neighbours, along arcs that lead out of the former,
// or into them.
void RollPrices::spread(std::vector<double> &values, bool outward) {
  for (std::size_t next = 0; next < queue_.size();) {  // it grows
    const int from = queue_[next++];
    isQueued_[static_cast<std::size_t>(from)] = 0;
    for (const RollNetwork::End &end : network_.endsOf(from)) {
      const int to = network_.otherNode(end);
      if (to == network_.root() || network_.room(end, outward) <= RollNetwork::kNoRolls) {
        continue;
      }
      const double along = values[static_cast<std::size_t>(from)] + network_.costOf(end, outward);
      if (along < values[static_cast<std::size_t>(to)] - RollNetwork::kNoMoney) {
        values[static_cast<std::size_t>(to)] = along;
        enqueue(to);
      }
    }
  }
}

// What no path from the root reaches may be worth anything up to its way to what one does reach.
void RollPrices::priceUnreached(int part) {
  queue_.clear();
  for (const int node : network_.parts()[static_cast<std::size_t>(part)]) {
    double &value = fromRoot_[static_cast<std::size_t>(node)];
    value = value < kInfinite ? -value : leastToRoot(node, true);
    if (value < kInfinite) {
      enqueue(node);
    }
  }
  spread(fromRoot_, false);
}

void RollPrices::enqueue(int node) {
  if (isQueued_[static_cast<std::size_t>(node)] == 0) {
    isQueued_[static_cast<std::size_t>(node)] = 1;
    queue_.push_back(node);
  }
}

void RollPrices::addToSums(int reels, double sign) {
  const auto rows = network_.space().rowsOf(reels);
  const auto rolls = network_.space().entriesOf(reels);
  for (std::size_t i = 1; i < rows.size(); ++i) {  // the first is the machine's
    const auto node = static_cast<std::size_t>(rows[i]);
    const auto part = static_cast<std::size_t>(network_.partOf(rows[i]));
    if (bound_[part] != bounds_) {
      bound_[part] = bounds_;
      toRootSum_[part] = 0;
      fromRootSum_[part] = 0;
      partsOfBound_.push_back(static_cast<int>(part));
      if (isPriced_[part] == 0) {
        price(static_cast<int>(part));
      }
    }
    toRootSum_[part] += sign * rolls[i] * toRoot_[node];
    fromRootSum_[part] += sign * rolls[i] * fromRoot_[node];
  }
}

double RollPrices::boundOfSwap(int more, int less) {
  ++bounds_;
  partsOfBound_.clear();
  if (more >= 0) {
    addToSums(more, 1);
  }
  if (less >= 0) {
    addToSums(less, -1);
  }
  return std::accumulate(partsOfBound_.begin(), partsOfBound_.end(), 0.0,
                         [this](double sum, int part) {
                           const auto at = static_cast<std::size_t>(part);
                           return sum + std::max(toRootSum_[at], fromRootSum_[at]);
                         });
}

}  // namespace corvane::plan
