#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "network/network_reader.h"
#include "plan/plan_record.h"
#include "plan/two_steps.h"

namespace corvane::plan {

// A text planned from end to end; the record refers to the network and problem beside it.
struct Planned {
  explicit Planned(const std::string &text, const ProblemOptions &options = {})
      : network(network::readNetworkText(text)),
        problem(makeProblem(network, options)),
        lp(problem),
        record(makeRecord(network, problem, solved(), {})) {}
  Planned(const Planned &) = delete;
  Planned &operator=(const Planned &) = delete;

  Network network;
  PlanProblem problem;
  CompactLp lp;
  PlanRecord record;

 private:
  Plan solved() {
    LinearSolver solver(lp.model());
    const LinearSolution solution = TwoSteps(problem, lp, solver, {}).solve();
    if (solution.status != Status::kOptimal) {
      throw std::runtime_error("no plan");
    }
    return readPlan(problem, lp, solution.primal);
  }
};

}  // namespace corvane::plan
