// Nodes of the import file that are apart and get one name. The names come from the builders of the
// export; those of patterns and batches, which hold an index and the words Pattern and Batch, are
// not looked at.

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include "checks/mill_checks.h"
#include "checks/shown_text.h"
#include "export/names.h"

namespace corvane::checks {

namespace {

enum class NodeRole {
  kMachine,
  kWaste,
  kProcess,
  kStore,
  kCutterSet,
  kOrderNode,
  kOrderSet,
  kDelay
};

std::string_view wordOf(NodeRole role) {
  constexpr std::array<std::string_view, 8> kWords = {
      "machine",         "waste", "process",         "store",
      "block of stores", "order", "block of orders", "delay"};
  return kWords.at(static_cast<std::size_t>(role));
}

// A node by what it is made of; the width tells apart nothing that the checks of widths do not.
struct Node {
  NodeRole role;
  TextId first;   // the cutter's name, or the grade
  TextId second;  // the cutter's name, or the customer
  TextId third;   // the mode
  double width;
  const SourceFile *file;
  quint32 line;
  int column;
  std::size_t hash = 0;

  std::tuple<NodeRole, TextId, TextId, TextId> identity() const {
    return {role, first, second, third};
  }
};

class NodeNames {
 public:
  explicit NodeNames(const MillView &view) : view_(view) {}

  void run() {
    if (!mayMeet()) {
      return;
    }
    addCutters();
    addOrders();
    for (Node &node : nodes_) {
      node.hash = qHash(nameOf(node));
    }
    std::stable_sort(nodes_.begin(), nodes_.end(),
                     [](const Node &a, const Node &b) { return a.hash < b.hash; });
    for (std::size_t i = 1; i < nodes_.size(); ++i) {
      for (std::size_t j = i; j > 0 && nodes_[j - 1].hash == nodes_[i].hash; --j) {
        if (nodes_[j - 1].identity() != nodes_[i].identity() &&
            nameOf(nodes_[j - 1]) == nameOf(nodes_[i])) {
          found_.push_back({j - 1, i});
          break;
        }
      }
    }
    report();
  }

 private:
  // Names of different parts can only meet where a part holds the underscore that joins them, where
  // a cutter and a customer have one name, or where a part is a word of the model's own: otherwise
  // the parts can be read from the name.
  bool mayMeet() const {
    const auto isRisky = [&](TextId id) {
      const QString &text = view_.mill.texts.text(id);
      return text.contains(QLatin1Char('_')) || text == QLatin1String("M") ||
             text == QLatin1String("Waste");
    };
    for (const CutterRow &cutter : view_.mill.cutters) {
      if (!cutter.isBroken && (isRisky(cutter.name) || isRisky(cutter.grade) ||
                               view_.index.customers.count(cutter.name) > 0)) {
        return true;
      }
    }
    return std::any_of(view_.index.customers.begin(), view_.index.customers.end(), isRisky) ||
           std::any_of(view_.mill.rates.begin(), view_.mill.rates.end(),
                       [&](const RateRow &rate) { return isRisky(rate.mode); });
  }

  bool isPlanned(TextId grade) const { return view_.index.byGrade.count(grade) > 0; }

  void addCutters() {
    for (const CutterRow &cutter : view_.mill.cutters) {
      if (cutter.isBroken || !cutter.isStored || !isPlanned(cutter.grade)) {
        continue;
      }
      const auto add = [&](NodeRole role, TextId first, TextId second, double width, int column) {
        nodes_.push_back(
            {role, first, second, 0, width, &view_.machineFile(), cutter.line, column});
      };
      add(NodeRole::kMachine, cutter.name, 0, 0, kMachineName);
      add(NodeRole::kWaste, cutter.grade, 0, 0, kMachineGrade);
      add(NodeRole::kProcess, cutter.grade, cutter.name, cutter.width, kMachineName);
      add(NodeRole::kCutterSet, cutter.grade, cutter.name, 0, kMachineName);
      for (const GradeWidth &width : view_.index.gradeWidths) {
        if (width.grade == cutter.grade) {
          add(NodeRole::kStore, cutter.grade, cutter.name, width.inches, kMachineName);
        }
      }
    }
  }

  void addOrders() {
    std::vector<std::tuple<TextId, TextId, quint32, quint32>> orders;
    for (const OrderRow &order : view_.mill.orders) {
      if (!order.isBroken) {
        orders.emplace_back(order.grade, order.customer, order.width, order.line);
      }
    }
    std::sort(orders.begin(), orders.end());
    std::unordered_map<TextId, std::vector<const RateRow *>> ratesOf;
    for (const RateRow &rate : view_.mill.rates) {
      if (!rate.isBroken && rate.isStored) {
        ratesOf[rate.customer].push_back(&rate);
      }
    }
    for (std::size_t i = 0; i < orders.size(); ++i) {
      const auto &[grade, customer, widthNumber, line] = orders[i];
      const double width = view_.mill.widths[widthNumber];
      const bool isSameSet =
          i > 0 && std::get<0>(orders[i - 1]) == grade && std::get<1>(orders[i - 1]) == customer;
      if (isSameSet && std::get<2>(orders[i - 1]) == widthNumber) {
        continue;
      }
      const auto add = [this, grade = grade, customer = customer, line = line](
                           NodeRole role, TextId mode, double ofWidth) {
        nodes_.push_back(
            {role, grade, customer, mode, ofWidth, &view_.orderFile(), line, kOrderCustomer});
      };
      if (!isSameSet) {
        add(NodeRole::kOrderSet, 0, 0);
      }
      add(NodeRole::kOrderNode, 0, width);
      if (view_.mill.parameters.delay != 0) {
        for (const RateRow *rate : ratesOf[customer]) {
          add(NodeRole::kDelay, rate->mode, width);
        }
      }
    }
  }

  QString nameOf(const Node &node) const {
    const TextTable &texts = view_.mill.texts;
    Cutter cutter;
    cutter.grade = texts.text(node.first);
    cutter.name = texts.text(node.role == NodeRole::kMachine ? node.first : node.second);
    cutter.width = node.width;
    Order order;
    order.grade = texts.text(node.first);
    order.customerName = texts.text(node.second);
    order.width = node.width;
    FreightRate rate;
    rate.mode = texts.text(node.third);
    switch (node.role) {
      case NodeRole::kMachine:
        return machineNodeName(cutter);
      case NodeRole::kWaste:
        return QString::fromStdString(wasteNodeName(cutter.grade));
      case NodeRole::kProcess:
        return cutterWidthName(cutter);
      case NodeRole::kStore:
        return cutterValueName(cutter, node.width);
      case NodeRole::kCutterSet:
        return cutterSetName(cutter);
      case NodeRole::kOrderNode:
        return orderNodeName(order);
      case NodeRole::kOrderSet:
        return orderSetName(order);
      case NodeRole::kDelay:
        break;
    }
    return delayNodeName(rate, order);
  }

  // One finding for each pair of texts that meet, however many widths they have.
  void report() {
    const auto isFixed = [](const Node &node) {
      return node.role == NodeRole::kMachine || node.role == NodeRole::kWaste;
    };
    const auto rankOf = [&](const Node &node) {
      return std::tuple(!isFixed(node), node.file == &view_.orderFile(), node.line);
    };
    std::set<std::tuple<TextId, TextId, TextId>> told;
    for (const auto &[a, b] : found_) {
      const bool firstIsLater = rankOf(nodes_[a]) > rankOf(nodes_[b]);
      const Node &odd = firstIsLater ? nodes_[a] : nodes_[b];
      const Node &other = firstIsLater ? nodes_[b] : nodes_[a];
      if (!told.insert({odd.first, odd.second, odd.third}).second) {
        continue;
      }
      const Code code = isFixed(odd) || isFixed(other) ? Code::kFixedName : Code::kSameNode;
      view_.sink.add(*odd.file, code, [&](Finding &finding) {
        placeAt(finding, *odd.file, odd.line, odd.column);
        finding.detail = nameOf(odd).toStdString() + " is a " + std::string(wordOf(odd.role)) +
                         " here and a " + std::string(wordOf(other.role)) + " of line " +
                         std::to_string(other.line) + " of " + other.file->name();
      });
    }
  }

  const MillView &view_;
  std::vector<Node> nodes_;
  std::vector<std::pair<std::size_t, std::size_t>> found_;
};

}  // namespace

void checkNodeNames(const MillView &view) {
  NodeNames(view).run();
}

}  // namespace corvane::checks
