// Input: an import file. It is refused, or gives a network whose arcs join nodes that are there and
// whose data hold one entry a period, and then a problem with a linear programme that fits it. Read
// on behind its faults it gives one whose places are there, and tells first what it was refused
// for.

#include <optional>
#include <string>

#include "check.h"
#include "network/network_builder.h"
#include "network/network_reader.h"
#include "plan/compact_lp.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::require;

void requireCarryingArcs(const network::Network &network) {
  for (const network::Arc &arc : network.arcs) {
    require(network.nodes[arc.from].gives(arc.commodity), "a node that gives");
    require(network.nodes[arc.to].takes(arc.commodity), "a node that takes");
  }
}

void requireSoundNetwork(const network::Network &network) {
  const std::size_t periods = network.periodCount();
  require(network.arcData.size() == network.arcs.size() * periods, "data of every arc");
  for (const network::Arc &arc : network.arcs) {
    require(arc.from < network.nodes.size() && arc.to < network.nodes.size(), "ends of an arc");
    require(arc.commodity < network.commodities.size(), "a commodity that is there");
  }
  for (const network::Node &node : network.nodes) {
    for (const network::Series *series :
         {&node.days, &node.storageMax, &node.undercost, &node.amount, &node.delay}) {
      require(series->empty() || series->size() == periods, "a datum a period");
    }
  }
}

void requireFittingProgramme(const plan::PlanProblem &problem) {
  const plan::CompactLp lp(problem);
  const plan::LinearModel &model = lp.model();
  require(model.start.back() == static_cast<int>(model.rowOf.size()), "the end of the columns");
  for (const int row : model.rowOf) {
    require(row >= 0 && row < model.rows(), "a row that is there");
  }
}

std::string readOn(std::string_view text) {
  std::string first;
  network::NetworkBuilder builder([&](const network::Refused &refused) {
    first = first.empty() ? std::to_string(refused.line()) + refused.what() : first;
  });
  const std::size_t bytes = text.size();
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    builder.take(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  if (!text.empty()) {
    builder.takeCutLine();
  }
  requireSoundNetwork(builder.finish(bytes));
  return first;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view text = corvane::fuzz::textOf(data, size);
  const std::string first = readOn(text);
  std::optional<network::Network> network;
  try {
    network = network::readNetworkText(text);
  } catch (const network::Refused &refused) {
    require(first == std::to_string(refused.line()) + refused.what(), "the same first fault");
    return 0;
  }
  require(first.empty(), "no fault in a file that is read");
  try {
    requireSoundNetwork(*network);
    requireCarryingArcs(*network);
    requireFittingProgramme(plan::makeProblem(*network, {}));
    plan::makeProblem(*network, {true, true, true});
  } catch (const network::Refused &) {
    // Said with its line.
  }
  return 0;
}
