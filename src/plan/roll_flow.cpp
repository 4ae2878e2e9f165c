#include "plan/roll_flow.h"

#include <algorithm>
#include <numeric>

namespace corvane::plan {

namespace {

// Rolls, and money, that are noise.
constexpr double kNoRolls = 1e-9;
constexpr double kNoMoney = 1e-7;

}  // namespace

RollFlow::RollFlow(const ReelSpace &space, double penalty)
    : space_(space), root_(space.model().rows()) {
  addArcs();
  listEnds();
  findParts();
  const auto nodes = static_cast<std::size_t>(root_) + 1;
  toRoot_.resize(nodes);
  fromRoot_.resize(nodes);
  distance_.resize(nodes);
  reachedBy_.resize(nodes);
  search_.resize(nodes);
  isQueued_.resize(nodes);
  toRootSum_.resize(parts_.size());
  fromRootSum_.resize(parts_.size());
  bound_.resize(parts_.size());
  restart(penalty);
}

void RollFlow::addArcs() {
  for (int column = 0; column < space_.model().columns(); ++column) {
    if (space_.lp().column(column).kind == ColumnKind::kReels) {
      continue;
    }
    Arc arc{root_, root_, column, 0, space_.model().upper[static_cast<std::size_t>(column)], 0};
    for (std::size_t i = 0; i < space_.rowsOf(column).size(); ++i) {
      (space_.entriesOf(column)[i] > 0 ? arc.to : arc.from) = space_.rowsOf(column)[i];
    }
    arcs_.push_back(arc);
  }
}

void RollFlow::listEnds() {
  endStart_.assign(static_cast<std::size_t>(root_) + 2, 0);
  for (const Arc &arc : arcs_) {
    ++endStart_[static_cast<std::size_t>(arc.from) + 1];
    ++endStart_[static_cast<std::size_t>(arc.to) + 1];
  }
  std::partial_sum(endStart_.begin(), endStart_.end(), endStart_.begin());
  ends_.resize(arcs_.size() * 2);
  std::vector<int> next = endStart_;
  for (std::size_t index = 0; index < arcs_.size(); ++index) {
    const auto place = [&](int node) {
      return static_cast<std::size_t>(next[static_cast<std::size_t>(node)]++);
    };
    ends_[place(arcs_[index].from)] = {static_cast<int>(index), true};
    ends_[place(arcs_[index].to)] = {static_cast<int>(index), false};
  }
}

void RollFlow::findParts() {
  partOf_.assign(static_cast<std::size_t>(root_), -1);
  for (int first = 0; first < root_; ++first) {
    if (partOf_[static_cast<std::size_t>(first)] >= 0) {
      continue;
    }
    const auto number = static_cast<int>(parts_.size());
    std::vector<int> nodes{first};
    partOf_[static_cast<std::size_t>(first)] = number;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      for (const End &end : endsOf(nodes[i])) {
        const int other = otherNode(end);
        if (other != root_ && partOf_[static_cast<std::size_t>(other)] < 0) {
          partOf_[static_cast<std::size_t>(other)] = number;
          nodes.push_back(other);
        }
      }
    }
    parts_.push_back(std::move(nodes));
  }
}

void RollFlow::restart(double penalty) {
  cost_ = 0;
  journal_.clear();
  changed_.clear();
  isPriced_.assign(parts_.size(), 0);
  for (Arc &arc : arcs_) {
    const auto at = static_cast<std::size_t>(arc.column);
    arc.cost = space_.costs()[at] + penalty * space_.unmetWeights()[at];
    arc.flow = space_.lp().column(arc.column).kind == ColumnKind::kUnmet ? arc.most : 0;
    cost_ += arc.cost * arc.flow;
  }
}

std::span<const RollFlow::End> RollFlow::endsOf(int node) const {
  const auto at = static_cast<std::size_t>(node);
  return {ends_.data() + endStart_[at], ends_.data() + endStart_[at + 1]};
}

int RollFlow::otherNode(const End &end) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail ? arc.to : arc.from;
}

double RollFlow::room(const End &end, bool outward) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail == outward ? arc.most - arc.flow : arc.flow;
}

double RollFlow::costOf(const End &end, bool outward) const {
  const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
  return end.isTail == outward ? arc.cost : -arc.cost;
}

void RollFlow::add(int column, double count) {
  const auto rows = space_.rowsOf(column);
  for (std::size_t i = 1; i < rows.size(); ++i) {  // the first is the machine's
    send(rows[i], count * space_.entriesOf(column)[i], Way::kToRoot);
  }
}

void RollFlow::remove(int column, double count) {
  const auto rows = space_.rowsOf(column);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    send(rows[i], count * space_.entriesOf(column)[i], Way::kFromRoot);
  }
}

void RollFlow::send(int node, double rolls, Way way) {
  changed_.push_back(partOf_[static_cast<std::size_t>(node)]);
  while (rolls > kNoRolls && findPath(node, way)) {
    const double sent = roomOfPath(node, rolls, way);
    push(node, sent, way);
    rolls -= sent;
  }
}

// The shortest path between the node and the root, always looked for from the node; labels are
// corrected in the order in which they came (Bellman and Ford), for arcs cost less than nothing
// where they are gone back.
bool RollFlow::findPath(int node, Way way) {
  ++searches_;
  queue_.clear();
  lastNode_ = -1;
  double shortest = kInfinite;
  reach(node, 0, {});
  const bool outward = way == Way::kToRoot;
  for (std::size_t next = 0; next < queue_.size();) {  // it grows
    const int from = queue_[next++];
    isQueued_[static_cast<std::size_t>(from)] = 0;
    const double distance = distance_[static_cast<std::size_t>(from)];
    for (const End &end : endsOf(from)) {
      if (room(end, outward) <= kNoRolls) {
        continue;
      }
      const double along = distance + costOf(end, outward);
      if (const int to = otherNode(end); to != root_) {
        reach(to, along, end);
      } else if (along < shortest - kNoMoney) {
        shortest = along;
        lastNode_ = from;
        lastEnd_ = end;
      }
    }
  }
  return lastNode_ >= 0;
}

void RollFlow::reach(int node, double distance, const End &end) {
  const auto at = static_cast<std::size_t>(node);
  if (search_[at] == searches_ && distance >= distance_[at] - kNoMoney) {
    return;
  }
  search_[at] = searches_;
  distance_[at] = distance;
  reachedBy_[at] = end;
  enqueue(node);
}

void RollFlow::enqueue(int node) {
  if (isQueued_[static_cast<std::size_t>(node)] == 0) {
    isQueued_[static_cast<std::size_t>(node)] = 1;
    queue_.push_back(node);
  }
}

double RollFlow::roomOfPath(int node, double most, Way way) const {
  const bool outward = way == Way::kToRoot;
  double least = std::min(most, room(lastEnd_, outward));
  for (int at = lastNode_; at != node;) {
    const End &end = reachedBy_[static_cast<std::size_t>(at)];
    least = std::min(least, room(end, outward));
    const Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
    at = end.isTail ? arc.from : arc.to;
  }
  return least;
}

void RollFlow::push(int node, double rolls, Way way) {
  const auto change = [&](const End &end) {
    Arc &arc = arcs_[static_cast<std::size_t>(end.arc)];
    const double more = end.isTail == (way == Way::kToRoot) ? rolls : -rolls;
    arc.flow += more;
    cost_ += more * arc.cost;
    journal_.push_back({end.arc, more});
    return end.isTail ? arc.from : arc.to;
  };
  change(lastEnd_);
  for (int at = lastNode_; at != node;) {
    at = change(reachedBy_[static_cast<std::size_t>(at)]);
  }
}

void RollFlow::commit() {
  for (const int part : changed_) {
    isPriced_[static_cast<std::size_t>(part)] = 0;
  }
  journal_.clear();
  changed_.clear();
}

void RollFlow::rollBack() {
  std::for_each(journal_.rbegin(), journal_.rend(), [this](const Step &step) {
    Arc &arc = arcs_[static_cast<std::size_t>(step.arc)];
    arc.flow -= step.change;
    cost_ -= step.change * arc.cost;
  });
  journal_.clear();
  changed_.clear();
}

void RollFlow::price(int part) {
  isPriced_[static_cast<std::size_t>(part)] = 1;
  startAtRoot(part, toRoot_, Way::kToRoot);
  spread(toRoot_, Way::kToRoot);
  startAtRoot(part, fromRoot_, Way::kFromRoot);
  spread(fromRoot_, Way::kFromRoot);
  priceUnreached(part);
}

// The nodes that have an arc to the root, or from it, with its cost.
void RollFlow::startAtRoot(int part, std::vector<double> &values, Way way) {
  const bool outward = way == Way::kToRoot;
  queue_.clear();
  for (const int node : parts_[static_cast<std::size_t>(part)]) {
    double &value = values[static_cast<std::size_t>(node)];
    value = kInfinite;
    for (const End &end : endsOf(node)) {
      if (otherNode(end) == root_ && room(end, outward) > kNoRolls) {
        value = std::min(value, costOf(end, outward));
      }
    }
    if (value < kInfinite) {
      enqueue(node);
    }
  }
}

void RollFlow::spread(std::vector<double> &values, Way way) {
  const bool outward = way == Way::kFromRoot;          // as seen from the node that has its value
  for (std::size_t next = 0; next < queue_.size();) {  // it grows
    const int from = queue_[next++];
    isQueued_[static_cast<std::size_t>(from)] = 0;
    for (const End &end : endsOf(from)) {
      const int to = otherNode(end);
      if (to == root_ || room(end, outward) <= kNoRolls) {
        continue;
      }
      const double along = values[static_cast<std::size_t>(from)] + costOf(end, outward);
      if (along < values[static_cast<std::size_t>(to)] - kNoMoney) {
        values[static_cast<std::size_t>(to)] = along;
        enqueue(to);
      }
    }
  }
}

// What no path from the root reaches may be worth anything up to its way to what one does reach.
void RollFlow::priceUnreached(int part) {
  queue_.clear();
  for (const int node : parts_[static_cast<std::size_t>(part)]) {
    double &value = fromRoot_[static_cast<std::size_t>(node)];
    if (value < kInfinite) {
      value = -value;
      enqueue(node);
    } else {
      for (const End &end : endsOf(node)) {
        if (otherNode(end) == root_ && room(end, true) > kNoRolls) {
          value = std::min(value, costOf(end, true));
        }
      }
      if (value < kInfinite) {
        enqueue(node);
      }
    }
  }
  spread(fromRoot_, Way::kToRoot);
}

void RollFlow::addToSums(int reels, double sign) {
  const auto rows = space_.rowsOf(reels);
  const auto rolls = space_.entriesOf(reels);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const auto node = static_cast<std::size_t>(rows[i]);
    const auto part = static_cast<std::size_t>(partOf_[node]);
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

double RollFlow::boundOfSwap(int more, int less) {
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

void RollFlow::write(std::vector<double> &values) const {
  for (const Arc &arc : arcs_) {
    values[static_cast<std::size_t>(arc.column)] = arc.flow;
  }
}

}  // namespace corvane::plan
