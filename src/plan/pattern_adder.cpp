// Patterns that are not in the file, in its manner.

#include <algorithm>

#include "plan/plan_problem.h"

namespace corvane::plan {

using network::Arc;
using network::ArcDatum;
using network::Node;
using network::NodeType;

namespace {

// "G_Pattern_7_C_100" of the sample pattern "G_Pattern_0_C_100" of grade G; the name is the
// program's for the next pattern of the cutter.
std::string nextName(const PlanProblem &problem, const Cutter &cutter) {
  const Pattern &sample = problem.patterns[cutter.samplePattern];
  Index count = 0;
  Index last = kNone;
  for (const Pattern &pattern : problem.patterns) {
    if (problem.cutters[pattern.cutter].node == cutter.node && pattern.node != last) {
      last = pattern.node;
      ++count;
    }
  }
  const std::string head = cutter.grade + "_Pattern_";
  const std::size_t tail = sample.name.find('_', std::min(head.size(), sample.name.size()));
  return sample.name.starts_with(head) && tail != std::string::npos
             ? head + std::to_string(count) + sample.name.substr(tail)
             : cutter.name + "_Pattern_" + std::to_string(count);
}

Index addNode(Network &network, NodeType type, const std::string &name) {
  Node node;
  node.name = name;
  node.type = type;
  network.nodes.push_back(std::move(node));
  return static_cast<Index>(network.nodes.size() - 1);
}

// An arc with the data of a like one; costs of kNone are 0.
Index addArc(Network &network, const Arc &arc, Index like) {
  const std::size_t periods = network.periodCount();
  network.arcs.push_back(arc);
  network.arcData.resize(network.arcs.size() * periods);
  for (std::size_t period = 0; like != kNone && period < periods; ++period) {
    network.arcData[(network.arcs.size() - 1) * periods + period] =
        ArcDatum{network.arcCost(like, period), 0.0, 0};
  }
  return static_cast<Index>(network.arcs.size() - 1);
}

// The arcs from the cutter to the pattern, through a batch of its own where the sample has one.
std::vector<Index> addDeckleArcs(Network &network, const Cutter &cutter, const Pattern &sample,
                                 Index node) {
  if (sample.deckleArcs.size() == 1) {
    return {addArc(network, {cutter.deckle, cutter.node, node, 0}, sample.deckleArcs.front())};
  }
  std::string name = network.nodes[node].name;
  if (const std::size_t at = name.find("_Pattern_"); at != std::string::npos) {
    name.replace(at, std::string_view("_Pattern_").size(), "_Batch_");
  }
  const Index batch = addNode(network, NodeType::kBatch, name);
  network.nodes[batch].attachments = {{cutter.deckle, true, 1.0}, {cutter.deckle, false, 1.0}};
  return {addArc(network, {cutter.deckle, cutter.node, batch, 0}, sample.deckleArcs.front()),
          addArc(network, {cutter.deckle, batch, node, 0}, sample.deckleArcs.back())};
}

// As trim that happens to be wound; the first pattern of a store tells its cost.
void raiseSurplusCost(Store &store, const Cutter &cutter) {
  for (std::size_t period = 0; period < store.surplusCost.size(); ++period) {
    const double cost = store.width * cutter.wasteCost[period];
    double &surplus = store.surplusCost[period];
    surplus = store.patterns.empty() ? cost : std::max(surplus, cost);
  }
}

}  // namespace

Index addPattern(Network &network, PlanProblem &problem, const NewPattern &wanted) {
  const Cutter &cutter = problem.cutters[wanted.cutter];
  const Pattern &sample = problem.patterns[cutter.samplePattern];
  const auto index = static_cast<Index>(problem.patterns.size());
  Pattern pattern;
  pattern.name = nextName(problem, cutter);
  pattern.cutter = wanted.cutter;
  pattern.grade = cutter.grade;
  pattern.trim = wanted.trim;
  pattern.offered = true;
  pattern.node = addNode(network, NodeType::kProcess, pattern.name);
  std::vector<network::Attachment> recipe{{cutter.deckle, true, 1.0}};
  for (const NewPattern::Rolls &rolls : wanted.rolls) {
    Store &store = problem.stores[rolls.store];
    const Index node = pattern.node;
    recipe.push_back({store.commodity, false, rolls.count});
    pattern.yields.push_back({store.commodity, store.width, rolls.count, {}, {rolls.store}});
    pattern.yields.back().arcs = {addArc(network, {store.commodity, node, store.node, 0}, kNone)};
    pattern.rollInches += rolls.count * store.width;
    raiseSurplusCost(store, cutter);
    store.patterns.push_back(index);
  }
  const Arc waste = network.arcs[sample.wasteArc];
  recipe.push_back({waste.commodity, false, wanted.trim});
  network.nodes[pattern.node].attachments = std::move(recipe);
  pattern.deckleArcs = addDeckleArcs(network, cutter, sample, pattern.node);
  pattern.wasteArc = addArc(network, {waste.commodity, pattern.node, waste.to, 0}, sample.wasteArc);
  for (std::size_t period = 0; period < problem.periodCount(); ++period) {
    double cost = cutter.feedCost[period] + wanted.trim * cutter.wasteCost[period];
    if (cutter.capacity > 0.0) {
      cost += (network.arcCost(cutter.timeArc, period) +
               problem.machines[cutter.machine].dayCost[period]) /
              cutter.capacity;
    }
    pattern.cost.push_back(cost);
  }
  problem.patterns.push_back(std::move(pattern));
  return index;
}

}  // namespace corvane::plan
