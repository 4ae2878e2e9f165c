#include "plan/roll_flow.h"

#include <algorithm>

namespace corvane::plan {

RollFlow::RollFlow(const ReelSpace &space, double penalty) : network_(space), prices_(network_) {
  const auto nodes = static_cast<std::size_t>(network_.root()) + 1;
  distance_.resize(nodes);
  reachedBy_.resize(nodes);
  search_.resize(nodes);
  isQueued_.resize(nodes);
  restart(penalty);
}

void RollFlow::restart(double penalty) {
  network_.restart(penalty);
  prices_.forgetAll();
  journal_.clear();
  changed_.clear();
}

void RollFlow::add(int column, double count) {
  const ReelSpace &space = network_.space();
  const auto rows = space.rowsOf(column);
  for (std::size_t i = 1; i < rows.size(); ++i) {  // the first is the machine's
    send(rows[i], count * space.entriesOf(column)[i], Way::kToRoot);
  }
}

void RollFlow::remove(int column, double count) {
  const ReelSpace &space = network_.space();
  const auto rows = space.rowsOf(column);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    send(rows[i], count * space.entriesOf(column)[i], Way::kFromRoot);
  }
}

void RollFlow::send(int node, double rolls, Way way) {
  changed_.push_back(network_.partOf(node));
  while (rolls > RollNetwork::kNoRolls && findPath(node, way)) {
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
    for (const End &end : network_.endsOf(from)) {
      if (network_.room(end, outward) <= RollNetwork::kNoRolls) {
        continue;
      }
      const double along = distance + network_.costOf(end, outward);
      if (const int to = network_.otherNode(end); to != network_.root()) {
        reach(to, along, end);
      } else if (along < shortest - RollNetwork::kNoMoney) {
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
  if (search_[at] == searches_ && distance >= distance_[at] - RollNetwork::kNoMoney) {
    return;
  }
  search_[at] = searches_;
  distance_[at] = distance;
  reachedBy_[at] = end;
  if (isQueued_[at] == 0) {
    isQueued_[at] = 1;
    queue_.push_back(node);
  }
}

double RollFlow::roomOfPath(int node, double most, Way way) const {
  const bool outward = way == Way::kToRoot;
  double least = std::min(most, network_.room(lastEnd_, outward));
  for (int at = lastNode_; at != node;) {
    const End &end = reachedBy_[static_cast<std::size_t>(at)];
    least = std::min(least, network_.room(end, outward));
    at = network_.nodeOf(end);
  }
  return least;
}

void RollFlow::push(int node, double rolls, Way way) {
  const auto change = [&](const End &end) {
    const double more = end.isTail == (way == Way::kToRoot) ? rolls : -rolls;
    network_.change(end.arc, more);
    journal_.push_back({end.arc, more});
    return network_.nodeOf(end);
  };
  change(lastEnd_);
  for (int at = lastNode_; at != node;) {
    at = change(reachedBy_[static_cast<std::size_t>(at)]);
  }
}

void RollFlow::commit() {
  for (const int part : changed_) {
    prices_.forget(part);
  }
  journal_.clear();
  changed_.clear();
}

void RollFlow::rollBack() {
  std::for_each(journal_.rbegin(), journal_.rend(),
                [this](const Step &step) { network_.change(step.arc, -step.change); });
  journal_.clear();
  changed_.clear();
}

}  // namespace corvane::plan
