#include "plan/whole_step.h"

#include "core/numbers.h"
#include "plan/two_steps.h"

namespace corvane::plan {

std::optional<WholeStepResult> planWhole(const PlanProblem &problem, const CompactLp &lp,
                                         const LinearSolution &optimum,
                                         const WholeReelOptions &options, ProgressLine &progress) {
  const ReelSpace space(problem, lp);
  const std::optional<WholeReels> whole = planWholeReels(
      space, optimum, options, [&](const std::string &way, double rolls, double gap) {
        progress.show([&] {
          return "Whole reels (" + way + "): " + fixed(rolls, 0) + " rolls and " +
                 fixed(100 * gap, 2) + " % above the bound";
        });
      });
  if (!whole) {
    return std::nullopt;
  }
  LinearSolver solver(lp.model());
  for (const int column : space.reels()) {
    const double reels = whole->plan.values[static_cast<std::size_t>(column)];
    solver.setColumnBounds(column, reels, reels);
  }
  return WholeStepResult{TwoSteps(problem, lp, solver, {}).solve(), whole->way};
}

}  // namespace corvane::plan
