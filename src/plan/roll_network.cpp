#include "plan/roll_network.h"

#include <numeric>

namespace corvane::plan {

RollNetwork::RollNetwork(const ReelSpace &space) : space_(space), root_(space.model().rows()) {
  addArcs();
  listEnds();
  findParts();
}

void RollNetwork::addArcs() {
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

void RollNetwork::listEnds() {
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

void RollNetwork::findParts() {
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

void RollNetwork::restart(double penalty) {
  cost_ = 0;
  for (Arc &arc : arcs_) {
    const auto at = static_cast<std::size_t>(arc.column);
    arc.cost = space_.costs()[at] + penalty * space_.unmetWeights()[at];
    arc.flow = space_.lp().column(arc.column).kind == ColumnKind::kUnmet ? arc.most : 0;
    cost_ += arc.cost * arc.flow;
  }
}

void RollNetwork::change(int arc, double rolls) {
  Arc &changed = arcs_[static_cast<std::size_t>(arc)];
  changed.flow += rolls;
  cost_ += rolls * changed.cost;
}

void RollNetwork::write(std::vector<double> &values) const {
  for (const Arc &arc : arcs_) {
    values[static_cast<std::size_t>(arc.column)] = arc.flow;
  }
}

}  // namespace corvane::plan
