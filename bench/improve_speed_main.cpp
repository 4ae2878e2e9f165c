// improve_speed FILE...: how long better patterns are looked for, as a section of
// docs/performance.md: rounds, patterns, and all of it beside the first linear programme, which has
// the patterns of the file. Processor times.

#include <cstdio>
#include <ctime>

#include "network/network_reader.h"
#include "plan/improve_step.h"
#include "plan/two_steps.h"

namespace {

using namespace corvane;

double secondsNow() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double firstSolve(const plan::PlanProblem &problem) {
  const double start = secondsNow();
  const plan::CompactLp lp(problem);
  plan::LinearSolver solver(lp.model());
  plan::TwoSteps(problem, lp, solver, {}).solve();
  return secondsNow() - start;
}

void measure(const std::string &file) {
  network::Network network = network::readNetworkFile(file);
  plan::PlanProblem problem = plan::makeProblem(network, {});
  const double alone = firstSolve(problem);
  const int limit = plan::rollsInPattern({}, problem);
  const double start = secondsNow();
  const plan::Improvement improvement = plan::improvePatterns(
      network, problem, {}, {.limit = limit}, [](const plan::ImproveReport &) {});
  const double seconds = secondsNow() - start;
  const plan::ImproveReport &report = improvement.report;
  std::printf("| %zu | %d | %d | %d | %d | %.1f | %s | %.2f | %.2f | %.1f |\n",
              problem.stores.size(), improvement.lp.model().rows(), limit, report.rounds,
              report.patterns, 100 * (1 - report.cost / report.firstCost),
              report.isComplete ? "yes" : "no", alone, seconds, seconds / alone);
}

}  // namespace

int main(int argc, char **argv) {
  std::printf(
      "\n## Better patterns\n\n"
      "What `corvane-plan --improve` takes until no pattern makes the plan better, beside the "
      "plan\n"
      "with the patterns of the file alone.\n\n"
      "| stores | rows | rolls in a pattern | rounds | new patterns | cost less, %% | certified | "
      "plan alone, s | improving, s | ratio |\n|---|---|---|---|---|---|---|---|---|---|\n");
  for (int at = 1; at < argc; ++at) {
    measure(argv[at]);
  }
  return 0;
}
