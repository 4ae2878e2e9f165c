#pragma once

#include "network/network_reader.h"
#include "plan/linear_solver.h"
#include "plan/mill_model.h"
#include "plan/reel_search.h"
#include "plan/two_steps.h"

namespace corvane::plan {

// Time that does not run out.
inline bool never() {
  return false;
}

// A random mill with all patterns of at most so many rolls, and the LP of its plan, solved.
struct RandomReels {
  explicit RandomReels(unsigned seed, int limit, bool freeStock = false)
      : mill(seed),
        network(network::readNetworkText(
            mill.model().importFile(allPatterns("G", mill.deckle(), mill.widths(), limit)))),
        problem(makeProblem(network, {.freeStock = freeStock})),
        lp(problem),
        space(problem, lp) {
    LinearSolver solver(lp.model());
    optimum = TwoSteps(problem, lp, solver, {}).solve();
  }

  RandomMill mill;
  Network network;
  PlanProblem problem;
  CompactLp lp;
  ReelSpace space;
  LinearSolution optimum;
};

}  // namespace corvane::plan
