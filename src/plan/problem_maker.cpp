#include "plan/problem_maker.h"

#include <algorithm>
#include <cmath>

namespace corvane::plan {

using network::Arc;
using network::Attachment;
using network::CommodityKind;
using network::Node;
using network::NodeType;
using network::Refused;
using network::Series;

namespace {

// Money a unit. The solver takes numbers from 1e25 on for none, and reels cost a multiple.
constexpr double kMostCost = 1e20;

std::vector<double> values(const Series &series) {
  std::vector<double> values;
  values.reserve(series.size());
  for (const network::Datum &datum : series) {
    values.push_back(datum.value);
  }
  return values;
}

}  // namespace

ProblemMaker::ProblemMaker(const Network &network, const ProblemOptions &options)
    : network_(network), adjacency_(network) {
  problem_.options = options;
  problem_.periods = network.periods;
}

PlanProblem ProblemMaker::make() {
  findRoles();
  checkArcs();
  checkCosts();
  addMachines();
  addCutters();
  addStorage();
  addPatterns();
  addRoutes();
  fillSurplusCosts();
  findReach(problem_);
  warnOfRoles(network_, problem_);
  return std::move(problem_);
}

void ProblemMaker::findRoles() {
  bool patterns = false;
  roles_.reserve(network_.nodes.size());
  for (const Node &node : network_.nodes) {
    Role role = Role::kNothing;
    switch (node.type) {
      case NodeType::kMachine:
        role = Role::kMachine;
        break;
      case NodeType::kProcess:
        role = processRole(node);
        break;
      case NodeType::kBatch:
        role = Role::kBatch;
        break;
      case NodeType::kStorage:
        role = storageRole(node);
        break;
      case NodeType::kDelay:
        role = Role::kDelay;
        break;
      case NodeType::kDemand:
        role = Role::kWaste;
        break;
    }
    patterns = patterns || role == Role::kPattern;
    roles_.push_back(role);
  }
  if (patterns && network_.arcs.empty()) {
    throw Refused(0,
                  "the file was written with 'patterns only': it has neither machines nor arcs, "
                  "so there is nothing to plan");
  }
}

ProblemMaker::Role ProblemMaker::processRole(const Node &node) const {
  for (const Attachment &attachment : node.attachments) {
    if (attachment.in) {
      const CommodityKind kind = network_.commodities[attachment.commodity].kind;
      return kind == CommodityKind::kMachineTime ? Role::kCutter
             : kind == CommodityKind::kDeckle    ? Role::kPattern
                                                 : Role::kNothing;
    }
  }
  return Role::kNothing;
}

ProblemMaker::Role ProblemMaker::storageRole(const Node &node) {
  const bool gives = std::any_of(node.attachments.begin(), node.attachments.end(),
                                 [](const Attachment &attachment) { return !attachment.in; });
  if (gives && !node.undercost.empty()) {
    throw Refused(node.line, "the node " + network::inQuotes(node.name) +
                                 " is a store and an order in one: a customer has the name of a "
                                 "cutter");
  }
  return gives ? Role::kStore : Role::kOrder;
}

void ProblemMaker::checkArcs() const {
  for (const Arc &arc : network_.arcs) {
    if (!mayJoin(roles_[arc.from], roles_[arc.to], network_.commodities[arc.commodity].kind)) {
      throw Refused(arc.line, "the arc leads from " +
                                  network::inQuotes(network_.nodes[arc.from].name) + " to " +
                                  network::inQuotes(network_.nodes[arc.to].name) +
                                  ", where none of its kind may");
    }
  }
}

// A cost that says "never" is beyond what the solver takes for a number.
void ProblemMaker::checkCosts() const {
  for (Index arc = 0; arc < network_.arcs.size(); ++arc) {
    for (std::size_t period = 0; period < network_.periods.size(); ++period) {
      if (std::fabs(network_.arcCost(arc, period)) > kMostCost) {
        throw Refused(
            network_.arcs[arc].line,
            "the arc from " + network::inQuotes(network_.nodes[network_.arcs[arc].from].name) +
                " to " + network::inQuotes(network_.nodes[network_.arcs[arc].to].name) +
                " costs more than 1e20, which no plan can reckon with; leave out the rate "
                "of a way that is not to be used");
      }
    }
  }
}

bool ProblemMaker::mayJoin(Role from, Role to, CommodityKind kind) {
  switch (kind) {
    case CommodityKind::kMachineTime:
      return from == Role::kMachine && to == Role::kCutter;
    case CommodityKind::kDeckle:
      return (from == Role::kCutter && (to == Role::kPattern || to == Role::kBatch)) ||
             (from == Role::kBatch && to == Role::kPattern);
    case CommodityKind::kWidth:
      return (from == Role::kPattern && to == Role::kStore) ||
             (from == Role::kStore && (to == Role::kDelay || to == Role::kOrder)) ||
             (from == Role::kDelay && to == Role::kOrder);
    case CommodityKind::kWaste:
      return from == Role::kPattern && to == Role::kWaste;
  }
  return false;
}

void ProblemMaker::addMachines() {
  place_.assign(network_.nodes.size(), kNone);
  for (Index node = 0; node < network_.nodes.size(); ++node) {
    if (roles_[node] == Role::kMachine) {
      place_[node] = static_cast<Index>(problem_.machines.size());
      const Node &machine = network_.nodes[node];
      problem_.machines.push_back(
          {machine.name, node, values(machine.days), values(machine.dayCost)});
    }
  }
}

void ProblemMaker::addCutters() {
  for (Index node = 0; node < network_.nodes.size(); ++node) {
    if (roles_[node] != Role::kCutter) {
      continue;
    }
    for (const Index arc : adjacency_.into(node)) {
      Cutter cutter;
      cutter.name = network_.nodes[node].name;
      cutter.node = node;
      cutter.machine = place_[network_.arcs[arc].from];
      cutter.timeArc = arc;
      cutter.feedCost.assign(problem_.periodCount(), HUGE_VAL);
      cutter.wasteCost = cutter.feedCost;
      for (const Attachment &attachment : network_.nodes[node].attachments) {
        if (!attachment.in) {
          cutter.deckle = attachment.commodity;
          cutter.deckleWidth = network_.commodities[attachment.commodity].width;
          cutter.capacity = attachment.quantity;
        }
      }
      problem_.cutters.push_back(std::move(cutter));
    }
  }
}

void ProblemMaker::addStorage() {
  for (Index index = 0; index < network_.nodes.size(); ++index) {
    const Node &node = network_.nodes[index];
    if (node.attachments.empty()) {
      continue;  // nothing can enter
    }
    const Index commodity = node.attachments.front().commodity;
    const double width = network_.commodities[commodity].width;
    if (roles_[index] == Role::kStore) {
      place_[index] = static_cast<Index>(problem_.stores.size());
      Store store{node.name, index, commodity, width, values(node.storageMax), {}, {}};
      if (problem_.options.freeStock) {
        store.stockMax.assign(problem_.periodCount(), HUGE_VAL);
      }
      problem_.stores.push_back(std::move(store));
    } else if (roles_[index] == Role::kOrder) {
      place_[index] = static_cast<Index>(problem_.orders.size());
      Order order{node.name, node.set == kNone ? "" : network_.setNames[node.set],
                  index,     width,
                  {},        values(node.undercost),
                  {},        {}};
      order.demand =
          node.amount.empty() ? std::vector<double>(problem_.periodCount()) : values(node.amount);
      order.undercost.resize(problem_.periodCount());
      problem_.highestUndercost =
          std::max(problem_.highestUndercost,
                   *std::max_element(order.undercost.begin(), order.undercost.end()));
      problem_.orders.push_back(std::move(order));
    }
  }
}

void ProblemMaker::fillSurplusCosts() {
  for (Store &store : problem_.stores) {
    store.surplusCost.assign(problem_.periodCount(), -HUGE_VAL);
  }
  for (const Pattern &pattern : problem_.patterns) {
    for (std::size_t period = 0; period < problem_.periodCount(); ++period) {
      const double waste =
          pattern.wasteArc == kNone ? 0.0 : network_.arcCost(pattern.wasteArc, period);
      for (const Yield &yield : pattern.yields) {
        for (const Index index : yield.stores) {
          Store &store = problem_.stores[index];
          store.surplusCost[period] = std::max(store.surplusCost[period], waste * store.width);
        }
      }
    }
  }
  for (Store &store : problem_.stores) {
    std::replace(store.surplusCost.begin(), store.surplusCost.end(), -HUGE_VAL, 0.0);
  }
}

PlanProblem makeProblem(const Network &network, const ProblemOptions &options) {
  return ProblemMaker(network, options).make();
}

}  // namespace corvane::plan
