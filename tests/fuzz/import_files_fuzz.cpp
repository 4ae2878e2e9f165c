// Input: an import file. It is refused, or gives a network whose arcs join nodes that are there and
// whose data hold one entry a period, and then a problem with a linear programme that fits it.

#include "check.h"
#include "network/network_reader.h"
#include "plan/compact_lp.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::require;

void requireSoundNetwork(const network::Network &network) {
  const std::size_t periods = network.periodCount();
  require(network.arcData.size() == network.arcs.size() * periods, "data of every arc");
  for (const network::Arc &arc : network.arcs) {
    require(arc.from < network.nodes.size() && arc.to < network.nodes.size(), "ends of an arc");
    require(network.nodes[arc.from].gives(arc.commodity), "a node that gives");
    require(network.nodes[arc.to].takes(arc.commodity), "a node that takes");
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  try {
    const network::Network network = network::readNetworkText(corvane::fuzz::textOf(data, size));
    requireSoundNetwork(network);
    requireFittingProgramme(plan::makeProblem(network, {}));
    plan::makeProblem(network, {true, true, true});
  } catch (const network::Refused &) {
    // Said with its line.
  }
  return 0;
}
