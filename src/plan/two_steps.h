#pragma once

#include <optional>
#include <vector>

#include "plan/compact_lp.h"
#include "plan/linear_solver.h"

namespace corvane::plan {

// Solves the LP for the first time. Where machines have by far too little time for what is ordered,
// the primal simplex begins from the plan that makes nothing, and has few reels to bring in: it
// takes a tenth of the dual's time, or less; else see LinearSolver::solveAfresh().
LinearSolution solveFirst(const PlanProblem &problem, const CompactLp &lp, LinearSolver &solver);

struct SolveOptions {
  double timeLimit = 0.0;        // seconds of processor time for each solve; 0: none
  std::optional<Method> method;  // of a solve from scratch; chosen by the model when empty
  const Basis *basis = nullptr;  // to begin from, where one is known
};

// The plan of a linear programme in two steps: first the least of undercost x unmet, then the least
// cost at that. In one step with the undercost as a cost it would come out wrong: the waste of one
// reel may cost more than a roll that is not delivered.
//
// That one sum comes near it, and is solved beforehand: both steps then start from its basis and
// take a few pivots, or none. Where nothing is unmet in it the first step is not needed.
//
// What stays unmet is counted in rolls of the highest undercost.
class TwoSteps {
 public:
  // The solver holds the LP's model. Both are REQUIRED to outlive this.
  TwoSteps(const PlanProblem &problem, const CompactLp &lp, LinearSolver &solver,
           const SolveOptions &options);

  // Leaves the solver with the costs of the second step, its basis, and the bounds that keep unmet
  // demand at its least.
  LinearSolution solve();

  // After solve(): the least weighted unmet rolls, beside what is out of reach.
  double leastUnmet() const { return leastUnmet_; }

  // After solve(): by row, what one more of its right-hand side adds to the weighted unmet rolls;
  // empty where all can be delivered.
  const std::vector<double> &unmetDual() const { return unmetDual_; }

 private:
  LinearSolution solveSum();
  LinearSolution firstStep();
  LinearSolution secondStep(const LinearSolution &first);
  void keepLeast(const LinearSolution &first);
  void boundUnmet(bool fixed);
  void setCosts(double costs, double shortage);
  double unmetOf(const LinearSolution &solution) const;
  bool isNothing(double unmet) const;
  double demandInReach() const;

  const PlanProblem &problem_;
  const CompactLp &lp_;
  LinearSolver &solver_;
  SolveOptions options_;
  double leastUnmet_ = 0.0;
  std::vector<double> unmetDual_;
};

}  // namespace corvane::plan
