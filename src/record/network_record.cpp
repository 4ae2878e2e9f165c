#include "record/network_record.h"

#include <map>

#include "core/numbers.h"
#include "core/text.h"
#include "record/name_index.h"

namespace corvane::record {

namespace {

using network::Index;
using network::kNone;
using network::NodeType;
using plan::PlanProblem;

constexpr const char *kMachinePrefix = "M_";

QString machineName(const std::string &node) {
  const QString name = text(node);
  return name.startsWith(QLatin1String(kMachinePrefix)) ? name.mid(2) : name;
}

class NetworkFiller {
 public:
  NetworkFiller(Record &record, const network::Network &network, const PlanProblem &problem,
                const QHash<QByteArray, QPoint> &places, const InputFacts &facts)
      : record_(record),
        network_(network),
        problem_(problem),
        places_(places),
        facts_(facts),
        numbers_(network.nodes.size(), -1) {}

  void fill() {
    for (const std::string &period : problem_.periods) {
      record_.periods << text(period);
    }
    addMachines();
    addCutters();
    addPatterns();
    addStores();
    addOrders();
    addOthers();
    addArcs();
  }

 private:
  // Starts a group; nodes that are numbered from now on belong to it.
  void beginGroup(const char *kind) {
    record_.network.groups.push_back({QLatin1String(kind), {}, {}});
  }

  // False for a node that has its number.
  bool takeNumber(Index node) {
    if (numbers_[node] >= 0) {
      return false;
    }
    numbers_[node] = count_++;
    const QPoint place = places_.value(QByteArray::fromStdString(network_.nodes[node].name));
    std::vector<double> &places = record_.network.groups.back().places;
    places.push_back(place.x());
    places.push_back(place.y());
    return true;
  }

  void addMachines() {
    beginGroup("machine");
    for (const plan::Machine &machine : problem_.machines) {
      machineIndex_.push_back(static_cast<int>(record_.machines.size()));
      if (takeNumber(machine.node)) {
        const QString name = machineName(machine.name);
        record_.machines.push_back({name, facts_.millOfMachine.value(name)});
      }
    }
  }

  void addCutters() {
    beginGroup("cutter");
    std::map<Index, int> ofNode;
    for (const plan::Cutter &cutter : problem_.cutters) {
      const auto known = ofNode.emplace(cutter.node, static_cast<int>(record_.cutters.size()));
      cutterIndex_.push_back(known.first->second);
      if (takeNumber(cutter.node)) {
        // Without a pattern that has waste, its waste cost is not in the file.
        const bool isKnown = cutter.samplePattern != kNone && !cutter.wasteCost.empty();
        record_.cutters.push_back({text(cutter.name), machineIndex_[cutter.machine],
                                   text(cutter.grade), cutter.deckleWidth, cutter.capacity,
                                   isKnown ? cutter.wasteCost.front() : 0.0});
      }
    }
  }

  void addPatterns() {
    beginGroup("pattern");
    for (const plan::Pattern &pattern : problem_.patterns) {
      if (!takeNumber(pattern.node)) {
        continue;
      }
      const int index = cutterIndex_[pattern.cutter];
      Cutter &cutter = record_.cutters[static_cast<std::size_t>(index)];
      if (cutter.grade.isEmpty()) {
        cutter.grade = text(pattern.grade);
      }
      Pattern made{text(pattern.name), index, {}, pattern.trim};
      for (const plan::Yield &yield : pattern.yields) {
        made.rolls.emplace_back(yield.width, static_cast<int>(yield.rolls));
      }
      record_.patterns.push_back(std::move(made));
    }
  }

  // A store's cutter is that of its patterns, or of another store of its set.
  void addStores() {
    std::map<Index, int> ofSet;
    for (const plan::Store &store : problem_.stores) {
      if (!store.patterns.empty()) {
        ofSet.emplace(network_.nodes[store.node].set, cutterOf(store));
      }
    }
    beginGroup("store");
    if (record_.cutters.empty()) {
      return;  // nothing could stand there
    }
    for (const plan::Store &store : problem_.stores) {
      const auto set = ofSet.find(network_.nodes[store.node].set);
      const int cutter = !store.patterns.empty() ? cutterOf(store)
                         : set != ofSet.end()    ? set->second
                                                 : cutterOfSet(network_.nodes[store.node].set);
      takeNumber(store.node);
      record_.stores.push_back({text(store.name), cutter, store.width});
    }
  }

  int cutterOf(const plan::Store &store) const {
    return cutterIndex_[problem_.patterns[store.patterns.front()].cutter];
  }

  // The cutter whose stores the set would hold by its name; the first where there is none.
  int cutterOfSet(Index set) const {
    const QString name = set == kNone ? QString() : text(network_.setNames[set]);
    for (std::size_t i = 0; i < record_.cutters.size(); ++i) {
      const Cutter &cutter = record_.cutters[i];
      const Machine &machine = record_.machines[static_cast<std::size_t>(cutter.machine)];
      if (name == cutter.grade + QLatin1Char('_') + machine.name) {
        return static_cast<int>(i);
      }
    }
    return 0;
  }

  void addOrders() {
    beginGroup("order");
    for (const plan::Order &order : problem_.orders) {
      takeNumber(order.node);
      const QString grade = gradeOf(order);
      const QString set = text(order.set);
      const QString prefix = grade + QLatin1Char('_');
      record_.orders.push_back({text(order.name), grade,
                                set.startsWith(prefix) ? set.mid(prefix.size()) : set, order.width,
                                order.demand});
    }
  }

  // That of the cutter whose store leads to it; without a way to it, the longest one that its set's
  // name begins with.
  QString gradeOf(const plan::Order &order) const {
    if (!order.routes.empty()) {
      const Index store = problem_.routes[order.routes.front()].store;
      return record_.cutters[static_cast<std::size_t>(record_.stores[store].cutter)].grade;
    }
    QString grade;
    for (const Cutter &cutter : record_.cutters) {
      if (cutter.grade.size() > grade.size() &&
          text(order.set).startsWith(cutter.grade + QLatin1Char('_'))) {
        grade = cutter.grade;
      }
    }
    return grade;
  }

  // Nodes that no list of the record has.
  void addOthers() {
    const std::pair<const char *, NodeType> kinds[] = {
        {"batch", NodeType::kBatch}, {"delay", NodeType::kDelay}, {"waste", NodeType::kDemand}};
    for (const auto &[kind, type] : kinds) {
      beginGroup(kind);
      for (Index node = 0; node < network_.nodes.size(); ++node) {
        if (network_.nodes[node].type == type && takeNumber(node)) {
          record_.network.groups.back().names << text(network_.nodes[node].name);
        }
      }
      if (record_.network.groups.back().names.isEmpty()) {
        record_.network.groups.pop_back();
      }
    }
  }

  void addArcs() {
    std::map<int, std::vector<int>> targets;
    for (const network::Arc &arc : network_.arcs) {
      const int from = numbers_[arc.from];
      const int to = numbers_[arc.to];
      if (from >= 0 && to >= 0) {
        targets[from].push_back(to);
      }
    }
    for (auto &[from, list] : targets) {
      list.insert(list.begin(), from);
      record_.network.arcs.push_back(std::move(list));
    }
  }

  Record &record_;
  const network::Network &network_;
  const PlanProblem &problem_;
  const QHash<QByteArray, QPoint> &places_;
  const InputFacts &facts_;
  std::vector<int> numbers_;  // of the network's nodes in the record; -1: none yet
  int count_ = 0;
  std::vector<int> machineIndex_;  // of the problem's machines in the record
  std::vector<int> cutterIndex_;
};

// Patterns by the names that the export gives them.
class PatternFiller {
 public:
  PatternFiller(Record &record, const network::Network &network,
                const QHash<QByteArray, QPoint> &places)
      : record_(record), network_(network), places_(places) {
    for (const network::Node &node : network.nodes) {
      nodes_.emplace(node.name, &node);
    }
  }

  void fill(const InputFacts &facts) {
    for (const std::string &period : network_.periods) {
      record_.periods << text(period);
    }
    NodeGroup group{QStringLiteral("pattern"), {}, {}};
    for (const CutterFact &fact : facts.cutters) {
      addPatterns(fact, group);
    }
    record_.network.groups = {std::move(group)};
  }

 private:
  void addPatterns(const CutterFact &fact, NodeGroup &group) {
    for (int number = 0;; ++number) {
      const std::string name = patternName(fact, number);
      const auto node = nodes_.find(name);
      if (node == nodes_.end()) {
        return;
      }
      if (number == 0) {
        addCutter(fact);
      }
      record_.patterns.push_back(patternOf(*node->second));
      const QPoint place = places_.value(QByteArray::fromStdString(name));
      group.places.push_back(place.x());
      group.places.push_back(place.y());
    }
  }

  static std::string patternName(const CutterFact &fact, int number) {
    return utf8(fact.grade) + "_Pattern_" + std::to_string(number) + "_" + utf8(fact.machine) +
           "_" + fixed(fact.deckle, 0);
  }

  void addCutter(const CutterFact &fact) {
    bool isNew = false;
    const int machine = machines_.add(fact.machine, isNew);
    if (isNew) {
      record_.machines.push_back({fact.machine, fact.mill});
    }
    record_.cutters.push_back({fact.grade + QLatin1Char('_') + fact.machine, machine, fact.grade,
                               fact.deckle, fact.capacity, fact.wasteCost});
  }

  Pattern patternOf(const network::Node &node) const {
    Pattern pattern{text(node.name), static_cast<int>(record_.cutters.size()) - 1, {}, 0};
    for (const network::Attachment &attachment : node.attachments) {
      const network::Commodity &commodity = network_.commodities[attachment.commodity];
      if (!attachment.in && commodity.kind == network::CommodityKind::kWidth) {
        pattern.rolls.emplace_back(commodity.width, static_cast<int>(attachment.quantity));
      } else if (!attachment.in && commodity.kind == network::CommodityKind::kWaste) {
        pattern.trim = attachment.quantity;
      }
    }
    return pattern;
  }

  Record &record_;
  const network::Network &network_;
  std::map<std::string, const network::Node *> nodes_;
  const QHash<QByteArray, QPoint> &places_;
  NameIndex machines_;
};

}  // namespace

void fillPatternsOnly(Record &record, const network::Network &network,
                      const QHash<QByteArray, QPoint> &places, const InputFacts &facts) {
  PatternFiller(record, network, places).fill(facts);
}

void fillNetwork(Record &record, const network::Network &network, const PlanProblem &problem,
                 const QHash<QByteArray, QPoint> &places, const InputFacts &facts) {
  NetworkFiller(record, network, problem, places, facts).fill();
}

}  // namespace corvane::record
