#include "record/flows.h"

#include <QHash>
#include <cmath>
#include <map>

namespace corvane::record {

namespace {

// The numbers of the record's nodes by kind.
class NodeNumbers {
 public:
  explicit NodeNumbers(const Network &network) {
    int first = 0;
    for (const NodeGroup &group : network.groups) {
      first_[group.kind] = first;
      for (qsizetype i = 0; i < group.names.size(); ++i) {
        named_[group.names[i]] = first + static_cast<int>(i);
      }
      first += static_cast<int>(group.places.size() / 2);
      end_[group.kind] = first;
    }
  }

  int of(const char *kind, int index) const { return first_.value(QLatin1String(kind)) + index; }
  int endOf(const char *kind) const { return end_.value(QLatin1String(kind)); }
  bool isOf(const char *kind, int node) const {
    const QString name = QLatin1String(kind);
    return end_.contains(name) && node >= first_.value(name) && node < end_.value(name);
  }
  // -1 when there is none among those that have names of their own.
  int named(const QString &name) const { return named_.value(name, -1); }

 private:
  QHash<QString, int> first_;
  QHash<QString, int> end_;
  QHash<QString, int> named_;
};

// What each node gives to.
std::map<int, std::vector<int>> targetsOf(const Network &network) {
  std::map<int, std::vector<int>> targets;
  for (const std::vector<int> &arcs : network.arcs) {
    if (!arcs.empty()) {
      std::vector<int> &list = targets[arcs.front()];
      list.insert(list.end(), arcs.begin() + 1, arcs.end());
    }
  }
  return targets;
}

class FlowSum {
 public:
  explicit FlowSum(const Record &record)
      : record_(record), nodes_(record.network), targets_(targetsOf(record.network)) {
    for (const auto &[from, list] : targets_) {
      for (const int to : list) {
        if (nodes_.isOf("batch", from) && nodes_.isOf("pattern", to)) {
          batchOf_[to] = from;
        }
      }
    }
  }

  std::vector<Flow> sum() {
    for (const Reels &reels : record_.plan->reels) {
      addReels(reels);
    }
    for (const Shipment &shipment : record_.plan->shipments) {
      addShipment(shipment);
    }
    std::vector<Flow> flows;
    for (const auto &[arc, inches] : inches_) {
      // A drawing needs no more digits, and there are many.
      if (const double rounded = std::round(10 * inches) / 10; rounded > 0) {
        flows.push_back({arc.first, arc.second, rounded});
      }
    }
    return flows;
  }

 private:
  void add(int from, int to, double inches) { inches_[{from, to}] += inches; }

  void addReels(const Reels &reels) {
    const Pattern &pattern = record_.patterns[static_cast<std::size_t>(reels.pattern)];
    const Cutter &cutter = record_.cutters[static_cast<std::size_t>(pattern.cutter)];
    const int cutterNode = nodes_.of("cutter", pattern.cutter);
    const int node = nodes_.of("pattern", reels.pattern);
    const double paper = reels.reels * cutter.deckle;
    add(nodes_.of("machine", cutter.machine), cutterNode, paper);
    if (const auto batch = batchOf_.find(node); batch != batchOf_.end()) {
      add(cutterNode, batch->second, paper);
      add(batch->second, node, paper);
    } else {
      add(cutterNode, node, paper);
    }
    const auto targets = targets_.find(node);
    for (const int target : targets == targets_.end() ? std::vector<int>() : targets->second) {
      add(node, target, reels.reels * inchesTo(pattern, target));
    }
  }

  // What a reel of the pattern gives to the node.
  double inchesTo(const Pattern &pattern, int node) const {
    if (!nodes_.isOf("store", node)) {
      return pattern.trim;
    }
    const Store &store = record_.stores[static_cast<std::size_t>(node - nodes_.of("store", 0))];
    double inches = 0;
    for (const auto &[width, count] : pattern.rolls) {
      inches += width == store.width ? width * count : 0;
    }
    return inches;
  }

  void addShipment(const Shipment &shipment) {
    const Store &store = record_.stores[static_cast<std::size_t>(shipment.store)];
    const Order &order = record_.orders[static_cast<std::size_t>(shipment.order)];
    const QString &mode = record_.plan->modes[shipment.mode];
    const int from = nodes_.of("store", shipment.store);
    const int to = nodes_.of("order", shipment.order);
    const int delay = nodes_.named(mode + QLatin1Char('_') + order.name);
    const double inches = shipment.rolls * store.width;
    if (delay < 0) {
      add(from, to, inches);
    } else {
      add(from, delay, inches);
      add(delay, to, inches);
    }
  }

  const Record &record_;
  NodeNumbers nodes_;
  std::map<int, std::vector<int>> targets_;
  std::map<int, int> batchOf_;
  std::map<std::pair<int, int>, double> inches_;
};

// Where the cutter's patterns give their waste; -1 when none does.
int wasteNode(const Record &record, const NodeNumbers &nodes, int cutter) {
  for (const std::vector<int> &arcs : record.network.arcs) {
    const int index = arcs.front() - nodes.of("pattern", 0);
    if (!nodes.isOf("pattern", arcs.front()) ||
        record.patterns[static_cast<std::size_t>(index)].cutter != cutter) {
      continue;
    }
    for (const int target : arcs) {
      if (nodes.isOf("waste", target)) {
        return target;
      }
    }
  }
  return -1;
}

std::vector<int> arcsOf(const Record &record, const NodeNumbers &nodes, const Pattern &pattern,
                        int node) {
  std::vector<int> arcs{node};
  for (std::size_t i = 0; i < record.stores.size(); ++i) {
    const Store &store = record.stores[i];
    for (const auto &[width, count] : pattern.rolls) {
      if (store.cutter == pattern.cutter && store.width == width) {
        arcs.push_back(nodes.of("store", static_cast<int>(i)));
      }
    }
  }
  if (const int waste = wasteNode(record, nodes, pattern.cutter); waste >= 0) {
    arcs.push_back(waste);
  }
  return arcs;
}

// It has no place in the file's drawing: it goes below the last pattern.
void addPlace(NodeGroup &group) {
  const std::size_t size = group.places.size();
  const double x = size < 2 ? 0 : group.places[size - 2];
  const double y = size < 2 ? 0 : group.places[size - 1] + 20;
  group.places.push_back(x);
  group.places.push_back(y);
}

}  // namespace

void addPatternNode(Record &record, const Pattern &pattern) {
  const int node = NodeNumbers(record.network).endOf("pattern");
  for (std::vector<int> &arcs : record.network.arcs) {
    for (int &end : arcs) {
      end += end >= node ? 1 : 0;
    }
  }
  for (NodeGroup &group : record.network.groups) {
    if (group.kind == QLatin1String("pattern")) {
      addPlace(group);
    }
  }
  const NodeNumbers nodes(record.network);
  record.network.arcs.push_back(arcsOf(record, nodes, pattern, node));
  record.network.arcs.push_back({nodes.of("cutter", pattern.cutter), node});
}

std::vector<Flow> flowsOf(const Record &record) {
  return FlowSum(record).sum();
}

}  // namespace corvane::record
