#include "plan/plan_check.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"
#include "plan/flows.h"

namespace corvane::plan {

using network::Adjacency;
using network::Attachment;
using network::CommodityKind;
using network::Node;
using network::NodeType;

namespace {

constexpr double kTolerance = 1e-6;
// Widths stand in the file with six digits.
constexpr double kPaperTolerance = 1e-5;

class Checker {
 public:
  Checker(const Network &network, const PlanProblem &problem, const Plan &plan)
      : network_(network),
        problem_(problem),
        plan_(plan),
        adjacency_(network),
        periods_(network.periodCount()),
        flows_(arcFlows(network, problem, plan)) {}

  std::vector<std::string> check(const Totals &totals) {
    checkSigns();
    placeStores();
    for (Index node = 0; node < network_.nodes.size(); ++node) {
      checkNode(node);
    }
    checkCost(totals);
    checkPaper(totals);
    return std::move(faults_);
  }

 private:
  double flow(Index arc, std::size_t period) const { return flows_[arc * periods_ + period]; }

  double in(Index node, std::size_t period, Index commodity = kNone) const {
    return sum(adjacency_.into(node), period, commodity);
  }
  double out(Index node, std::size_t period, Index commodity = kNone) const {
    return sum(adjacency_.from(node), period, commodity);
  }
  double sum(std::span<const Index> arcs, std::size_t period, Index commodity) const {
    double total = 0.0;
    for (const Index arc : arcs) {
      if (commodity == kNone || network_.arcs[arc].commodity == commodity) {
        total += flow(arc, period);
      }
    }
    return total;
  }

  void fault(const std::string &what) { faults_.push_back(what); }

  // The two sides of an equation at a node.
  void expectEqual(double left, double right, Index node, std::size_t period, const char *what) {
    if (!(std::fabs(left - right) <= kTolerance * std::max({1.0, left, right}))) {
      fault("at \"" + network_.nodes[node].name + "\" in period " + network_.periods[period] +
            ": " + what + ": " + general(left) + " is not " + general(right));
    }
  }

  void expectAtMost(double value, double most, Index node, std::size_t period, const char *what) {
    if (!(value <= most + kTolerance * std::max(1.0, most))) {
      fault("at \"" + network_.nodes[node].name + "\" in period " + network_.periods[period] +
            ": " + what + ": " + general(value) + " is more than " + general(most));
    }
  }

  void checkSigns() {
    for (const std::vector<double> *values : std::initializer_list<const std::vector<double> *>{
             &flows_, &plan_.surplus, &plan_.stock, &plan_.unmet}) {
      if (std::any_of(values->begin(), values->end(), [](double value) { return !(value >= 0); })) {
        fault("a flow is below 0");
      }
    }
  }

  void placeStores() {
    place_.assign(network_.nodes.size(), kNone);
    for (Index store = 0; store < problem_.stores.size(); ++store) {
      place_[problem_.stores[store].node] = store;
    }
    for (Index order = 0; order < problem_.orders.size(); ++order) {
      place_[problem_.orders[order].node] = order;
    }
  }

  void checkNode(Index index) {
    const Node &node = network_.nodes[index];
    for (std::size_t period = 0; period < periods_; ++period) {
      switch (node.type) {
        case NodeType::kMachine:
          expectAtMost(out(index, period), node.days[period].value, index, period, "days");
          break;
        case NodeType::kProcess:
          checkProcess(index, period);
          break;
        case NodeType::kBatch:
          expectEqual(in(index, period), out(index, period), index, period, "reels of a batch");
          break;
        case NodeType::kStorage:
          checkStorage(index, period);
          break;
        case NodeType::kDelay:
          checkDelay(index, period);
          break;
        case NodeType::kDemand:
          break;
      }
    }
  }

  // All that goes in and out is the same number of runs.
  void checkProcess(Index index, std::size_t period) {
    double runs = -1.0;
    for (const Attachment &attachment : network_.nodes[index].attachments) {
      const double moved = attachment.in ? in(index, period, attachment.commodity)
                                         : out(index, period, attachment.commodity);
      if (runs < 0.0) {
        runs = attachment.quantity > 0.0 ? moved / attachment.quantity : runs;
      } else {
        expectEqual(moved, runs * attachment.quantity, index, period, "recipe");
      }
    }
  }

  void checkStorage(Index index, std::size_t period) {
    const Node &node = network_.nodes[index];
    if (place_[index] == kNone) {
      return;  // nothing may enter it
    }
    const std::size_t at = place_[index] * periods_ + period;
    const bool isStore = std::any_of(node.attachments.begin(), node.attachments.end(),
                                     [](const Attachment &attachment) { return !attachment.in; });
    if (!isStore) {
      const double amount = node.amount.empty() ? 0.0 : node.amount[period].value;
      expectEqual(in(index, period) + plan_.unmet[at], amount, index, period, "demand");
      return;
    }
    const double kept = period == 0 ? 0.0 : plan_.stock[at - 1];
    expectEqual(kept + in(index, period), out(index, period) + plan_.stock[at] + plan_.surplus[at],
                index, period, "rolls");
    if (period + 1 == periods_) {
      expectAtMost(plan_.stock[at], 0.0, index, period, "stock at the end");
    } else if (!problem_.options.freeStock) {
      expectAtMost(plan_.stock[at], node.storageMax[period].value, index, period, "stock");
    }
  }

  // Where a roll arrives that enters by the arc; the number of periods or more: never.
  double arrival(Index arc, std::size_t period) const {
    const double delay = problem_.options.delaysByMill
                             ? network_.arcDatum(arc, period).delayWhenWritten
                             : network_.nodes[network_.arcs[arc].to].delay[period].value;
    return static_cast<double>(period) + std::ceil(delay);
  }

  void checkDelay(Index index, std::size_t period) {
    double arriving = 0.0;
    double late = 0.0;
    for (const Index arc : adjacency_.into(index)) {
      for (std::size_t leaving = 0; leaving < periods_; ++leaving) {
        if (arrival(arc, leaving) == static_cast<double>(period)) {
          arriving += flow(arc, leaving);
        }
      }
      if (arrival(arc, period) >= static_cast<double>(periods_)) {
        late += flow(arc, period);
      }
    }
    expectEqual(arriving, out(index, period), index, period, "rolls on their way");
    expectAtMost(late, 0.0, index, period, "rolls that arrive too late");
  }

  // Width times the highest waste cost of the patterns that may fill the store.
  double surplusCost(const Store &store, std::size_t period) const {
    double highest = -HUGE_VAL;
    for (const Index arc : adjacency_.into(store.node)) {
      for (const Index waste : adjacency_.from(network_.arcs[arc].from)) {
        if (network_.commodities[network_.arcs[waste].commodity].kind == CommodityKind::kWaste) {
          highest = std::max(highest, network_.arcCost(waste, period));
        }
      }
    }
    return std::isinf(highest) ? 0.0 : highest * store.width;
  }

  void checkCost(const Totals &totals) {
    double cost = 0.0;
    double size = 0.0;
    const auto add = [&](double part) {
      cost += part;
      size += std::fabs(part);
    };
    for (std::size_t period = 0; period < periods_; ++period) {
      for (Index arc = 0; arc < network_.arcs.size(); ++arc) {
        add(flow(arc, period) * network_.arcCost(arc, period));
      }
      for (const Machine &machine : problem_.machines) {
        add(out(machine.node, period) * network_.nodes[machine.node].dayCost[period].value);
      }
      for (std::size_t store = 0; store < problem_.stores.size(); ++store) {
        if (const double rolls = plan_.surplus[store * periods_ + period]; rolls > 0.0) {
          add(rolls * surplusCost(problem_.stores[store], period));
        }
      }
    }
    if (!(std::fabs(cost - totals.cost.total()) <= kTolerance * std::max(1.0, size))) {
      fault("the flows cost " + general(cost) + " and the totals say " +
            general(totals.cost.total()));
    }
  }

  // Holds where every pattern in use adds up: not where one is wider than its deckle.
  void checkPaper(const Totals &totals) {
    for (std::size_t index = 0; index < problem_.patterns.size(); ++index) {
      const Pattern &pattern = problem_.patterns[index];
      const double deckle = problem_.cutters[pattern.cutter].deckleWidth;
      for (std::size_t period = 0; period < periods_; ++period) {
        if (plan_.reels[index * periods_ + period] > 0.0 &&
            std::fabs(pattern.rollInches + pattern.trim - deckle) > kPaperTolerance * deckle) {
          return;
        }
      }
    }
    const double used = totals.deliveredInches + totals.surplusInches + totals.trimInches;
    if (!(std::fabs(used - totals.deckleInches) <= kPaperTolerance * totals.deckleInches + 1e-6)) {
      fault("the paper is " + general(totals.deckleInches) + " inches, and rolls and trim are " +
            general(used));
    }
  }

  const Network &network_;
  const PlanProblem &problem_;
  const Plan &plan_;
  Adjacency adjacency_;
  std::size_t periods_;
  std::vector<double> flows_;
  std::vector<Index> place_;  // of a store or order node in its list of the problem
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> checkPlan(const Network &network, const PlanProblem &problem,
                                   const Plan &plan, const Totals &totals) {
  return Checker(network, problem, plan).check(totals);
}

}  // namespace corvane::plan
