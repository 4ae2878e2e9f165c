#include <iostream>

#include "core/text.h"
#include "network/network_reader.h"
#include "plan/totals.h"
#include "plan/two_steps.h"
#include "programs/command_line.h"

namespace {

using namespace corvane;

std::vector<CommandOption> options() {
  return {
      {{"import-file"}, "FILE", "plan this import file"},
      {{"storage"}, "KIND", "inf: let rolls stay at the cutters from period to period"},
      {{"delays"}, "KIND", "by-mill: give each mill its own transit time"},
      {{"keep-impossible"}, "", "run patterns that are wider than their deckle too"},
      {{"q", "quiet"}, "", "print the totals alone"},
  };
}

}  // namespace

int main(int argc, char **argv) {
  CommandLine line({"corvane-plan", "[FOLDER]",
                    "Solves the network of an import file: what each machine runs, and when.", 1},
                   options());
  if (const auto status = line.parse(argc, argv, std::cout, std::cerr)) {
    return *status;
  }
  try {
    network::Network network = network::readNetworkFile(utf8(line.value("import-file")));
    const plan::PlanProblem problem = plan::makeProblem(
        network, {line.value("storage") == "inf", line.value("delays") == "by-mill",
                  line.has("keep-impossible")});
    plan::CompactLp lp(problem);
    plan::LinearSolver solver(lp.model());
    plan::TwoSteps steps(problem, lp, solver, {});
    const plan::LinearSolution solution = steps.solve();
    if (solution.status != plan::Status::kOptimal) {
      std::cerr << "corvane-plan: no plan\n";
      return 1;
    }
    const plan::Totals totals = sumUp(network, problem, readPlan(problem, lp, solution.primal));
    std::cout.precision(12);
    std::cout << "unmet " << totals.unmetRolls << "\ncost " << totals.cost.total() << "\nreels "
              << totals.reels << "\nsurplus " << totals.surplusRolls << '\n';
  } catch (const network::Refused &refused) {
    std::cerr << "corvane-plan: line " << refused.line() << ": " << refused.what() << '\n';
    return 2;
  }
  return 0;
}
