// plan_speed FILE...: how fast import files are read and planned, as a section of
// docs/performance.md: megabytes a second, and both steps of the plan beside CLP's dual simplex
// alone on the same linear programme, with unmet rolls at their undercost. Processor times, the
// least of three.

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>

#include "core/numbers.h"
#include "network/network_reader.h"
#include "plan/two_steps.h"

namespace {

using namespace corvane;

constexpr double kMega = 1e6;

double secondsOf(const std::function<void()> &work) {
  double least = HUGE_VAL;
  for (int repeat = 0; repeat < 3; ++repeat) {
    const std::clock_t start = std::clock();
    work();
    least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return least;
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024 / kMega;
}

plan::LinearModel withShortage(const plan::PlanProblem &problem, const plan::CompactLp &lp) {
  plan::LinearModel model = lp.model();
  for (const int column : lp.unmetColumns()) {
    const plan::ColumnRole &role = lp.column(column);
    model.cost[static_cast<std::size_t>(column)] = problem.orders[role.what].undercost[role.period];
  }
  return model;
}

void measure(const std::string &file) {
  const network::Network network = network::readNetworkFile(file);
  const plan::PlanProblem problem = plan::makeProblem(network, {});
  const plan::CompactLp lp(problem);
  const double memory = peakMegabytes();
  const double bytes = static_cast<double>(network.bytes) / kMega;
  const double reading = secondsOf([&] { network::readNetworkFile(file); });
  double unmet = 0.0;
  const double steps = secondsOf([&] {
    plan::LinearSolver solver(lp.model());
    plan::TwoSteps two(problem, lp, solver, {});
    two.solve();
    unmet = two.leastUnmet();
  });
  const plan::LinearModel model = withShortage(problem, lp);
  const double alone = secondsOf([&] { plan::LinearSolver(model).solve(plan::Method::kDual); });
  std::printf("| %.1f | %d x %d | %.0f | %.0f | %.2f | %.2f | %.2f | %.2f |\n", bytes,
              lp.model().rows(), lp.model().columns(), unmet, bytes / reading, memory / bytes,
              steps, alone, steps / alone);
}

}  // namespace

int main(int argc, char **argv) {
  std::printf(
      "\n## Plans\n\n"
      "`corvane-plan`: an import file read, and both steps of its plan beside CLP's dual simplex\n"
      "alone, which plans in one step with unmet rolls at their undercost.\n\n"
      "| MB | rows x columns | rolls unmet | read, MB/s | memory / file | two steps, s | dual "
      "alone, "
      "s | ratio |\n|---|---|---|---|---|---|---|---|\n");
  for (int at = 1; at < argc; ++at) {
    measure(argv[at]);
  }
  return 0;
}
