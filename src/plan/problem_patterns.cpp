// The part of the maker that finds patterns and their costs.

#include <algorithm>
#include <cmath>
#include <string_view>

#include "plan/problem_maker.h"

namespace corvane::plan {

using network::Attachment;
using network::CommodityKind;

namespace {

constexpr std::string_view kWasteSuffix = "_Waste";

// Half a unit of the sixth digit, to which the file rounds a number.
double rounding(double number) {
  return number == 0.0 ? 0.0 : 0.5 * std::pow(10.0, std::floor(std::log10(std::fabs(number))) - 5);
}

// Whether the rolls fit into the deckle as far as the six digits of the file tell. A pattern of
// which something is left over fits in any case.
bool fits(const Pattern &pattern, double deckle) {
  double tolerance = rounding(deckle);
  for (const Yield &yield : pattern.yields) {
    tolerance += yield.rolls * rounding(yield.width);
  }
  return pattern.trim > 0.0 || pattern.rollInches <= deckle + tolerance * (1 + 1e-9);
}

}  // namespace

void ProblemMaker::addPatterns() {
  for (Index node = 0; node < network_.nodes.size(); ++node) {
    if (roles_[node] == Role::kPattern) {
      addFedPatterns(node);
    }
  }
  for (Index index = 0; index < problem_.patterns.size(); ++index) {
    const Pattern &pattern = problem_.patterns[index];
    teachCutter(index);
    if (!pattern.usable()) {
      continue;
    }
    for (const Yield &yield : pattern.yields) {
      for (const Index store : yield.stores) {
        if (yield.rolls > 0.0) {
          problem_.stores[store].patterns.push_back(index);
        }
      }
    }
  }
}

// One pattern for each cutter and machine that can feed the node.
void ProblemMaker::addFedPatterns(Index node) {
  for (const Index arc : adjacency_.into(node)) {
    const Index feeder = network_.arcs[arc].from;
    if (roles_[feeder] == Role::kCutter) {
      addPatternOf(node, feeder, {arc});
      continue;
    }
    for (const Index first : adjacency_.into(feeder)) {
      if (roles_[network_.arcs[first].from] == Role::kCutter &&
          network_.arcs[first].commodity == network_.arcs[arc].commodity) {
        addPatternOf(node, network_.arcs[first].from, {first, arc});
      }
    }
  }
}

void ProblemMaker::addPatternOf(Index node, Index cutterNode,
                                const std::vector<Index> &deckleArcs) {
  for (Index cutter = 0; cutter < problem_.cutters.size(); ++cutter) {
    if (problem_.cutters[cutter].node != cutterNode) {
      continue;
    }
    Pattern pattern;
    pattern.name = network_.nodes[node].name;
    pattern.node = node;
    pattern.cutter = cutter;
    pattern.deckleArcs = deckleArcs;
    fillYields(pattern);
    fillWaste(pattern);
    pattern.possible =
        problem_.options.keepImpossible || fits(pattern, problem_.cutters[cutter].deckleWidth);
    fillCost(pattern);
    problem_.patterns.push_back(std::move(pattern));
  }
}

void ProblemMaker::fillYields(Pattern &pattern) const {
  for (const Attachment &attachment : network_.nodes[pattern.node].attachments) {
    const network::Commodity &commodity = network_.commodities[attachment.commodity];
    if (attachment.in || commodity.kind != CommodityKind::kWidth) {
      continue;
    }
    Yield yield{attachment.commodity, commodity.width, attachment.quantity, {}, {}};
    for (const Index arc : adjacency_.from(pattern.node)) {
      if (network_.arcs[arc].commodity == attachment.commodity) {
        yield.arcs.push_back(arc);
        yield.stores.push_back(place_[network_.arcs[arc].to]);
      }
    }
    pattern.rollInches += yield.rolls * yield.width;
    pattern.stopped = pattern.stopped || (yield.arcs.empty() && yield.rolls > 0.0);
    if (!yield.arcs.empty()) {
      pattern.yields.push_back(std::move(yield));
    }
  }
}

void ProblemMaker::fillWaste(Pattern &pattern) const {
  for (const Attachment &attachment : network_.nodes[pattern.node].attachments) {
    if (!attachment.in &&
        network_.commodities[attachment.commodity].kind == CommodityKind::kWaste) {
      pattern.trim = attachment.quantity;
    }
  }
  for (const Index arc : adjacency_.from(pattern.node)) {
    if (network_.commodities[network_.arcs[arc].commodity].kind == CommodityKind::kWaste) {
      if (pattern.wasteArc != kNone) {
        throw network::Refused(network_.arcs[arc].line,
                               "the pattern \"" + pattern.name + "\" has two ways for its waste");
      }
      pattern.wasteArc = arc;
      const std::string &sink = network_.nodes[network_.arcs[arc].to].name;
      pattern.grade =
          sink.ends_with(kWasteSuffix) ? sink.substr(0, sink.size() - kWasteSuffix.size()) : sink;
    }
  }
  pattern.stopped = pattern.stopped || (pattern.wasteArc == kNone && pattern.trim > 0.0);
}

void ProblemMaker::fillCost(Pattern &pattern) const {
  const Cutter &cutter = problem_.cutters[pattern.cutter];
  const Machine &machine = problem_.machines[cutter.machine];
  pattern.cost.resize(problem_.periodCount());
  for (std::size_t period = 0; period < pattern.cost.size(); ++period) {
    double cost = 0.0;
    for (const Index arc : pattern.deckleArcs) {
      cost += network_.arcCost(arc, period);
    }
    if (pattern.wasteArc != kNone) {
      cost += pattern.trim * network_.arcCost(pattern.wasteArc, period);
    }
    if (cutter.capacity > 0.0) {
      cost +=
          (network_.arcCost(cutter.timeArc, period) + machine.dayCost[period]) / cutter.capacity;
    }
    pattern.cost[period] = cost;
  }
}

// What a new pattern of the cutter would cost is known from those that it has.
void ProblemMaker::teachCutter(Index index) {
  const Pattern &pattern = problem_.patterns[index];
  Cutter &cutter = problem_.cutters[pattern.cutter];
  if (cutter.samplePattern != kNone || pattern.wasteArc == kNone) {
    return;
  }
  cutter.samplePattern = index;
  cutter.grade = pattern.grade;
  for (std::size_t period = 0; period < problem_.periodCount(); ++period) {
    cutter.feedCost[period] = 0.0;
    for (const Index arc : pattern.deckleArcs) {
      cutter.feedCost[period] += network_.arcCost(arc, period);
    }
    cutter.wasteCost[period] = network_.arcCost(pattern.wasteArc, period);
  }
}

}  // namespace corvane::plan
