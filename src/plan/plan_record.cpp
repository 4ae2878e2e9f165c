#include "plan/plan_record.h"

#include <algorithm>
#include <string_view>

#include "plan/plan_check.h"
#include "plan/unmet_reasons.h"

namespace corvane::plan {

namespace {

constexpr std::string_view kWidthPrefix = "DemandWidth";

std::vector<network::Warning> gatherWarnings(const Network &network, const PlanProblem &problem) {
  std::vector<network::Warning> warnings = network.warnings;
  warnings.insert(warnings.end(), problem.warnings.begin(), problem.warnings.end());
  const std::vector<network::Warning> reach = reachWarnings(network, problem);
  warnings.insert(warnings.end(), reach.begin(), reach.end());
  std::stable_sort(
      warnings.begin(), warnings.end(),
      [](const network::Warning &a, const network::Warning &b) { return a.line < b.line; });
  return warnings;
}

}  // namespace

PlanRecord makeRecord(const Network &network, const PlanProblem &problem, Plan plan,
                      SolverRecord solver) {
  explainUnmet(problem, plan);
  const Totals totals = sumUp(network, problem, plan);
  std::vector<std::string> faults = checkPlan(network, problem, plan, totals);
  return {network,           problem,
          std::move(plan),   totals,
          std::move(solver), gatherWarnings(network, problem),
          std::move(faults), {}};
}

std::vector<std::pair<std::string, double>> rollsByWidth(const Network &network,
                                                         const Pattern &pattern) {
  std::vector<std::pair<std::string, double>> rolls;
  for (const Yield &yield : pattern.yields) {
    rolls.emplace_back(network.commodities[yield.commodity].name.substr(kWidthPrefix.size()),
                       yield.rolls);
  }
  return rolls;
}

}  // namespace corvane::plan
