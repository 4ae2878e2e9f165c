#include "planner_run.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <numeric>

#include "app/planner.h"
#include "interposed.h"
#include "resources.h"

namespace corvane::bench {

double RunResult::generation() const {
  const RunResult &run = *this;
  return run[Phase::kMasterSolver] + run[Phase::kPricing] + run[Phase::kPatternSets] +
         run[Phase::kGenerationRest];
}

double RunResult::selection() const {
  const RunResult &run = *this;
  return run[Phase::kFinalSolver] + run[Phase::kFinalLists] + run[Phase::kFinalRest];
}

double RunResult::total() const {
  return std::accumulate(times.begin() + 1, times.end(), 0.0);
}

void RunResult::addTimes(const RunResult &other) {
  std::transform(times.begin(), times.end(), other.times.begin(), times.begin(), std::plus<>());
}

RunResult runPlannerHere(const RunKind &kind, LpRecording *recording) {
  if (kind.solver != nullptr) {
    setenv("CORVANE_LP_PLAIN", kind.solver, 1);
  }
  RunResult result;
  interposed().literalPricing = kind.literalPricing;
  interposed().recording = recording;
  interposed().result = &result;
  PlanningComparators comparators;
  RunRecord run(comparators);
  PatternRandom random;
  std::ofstream log;
  runPlanner(run, random, log);
  interposed().exporting.reset();
  result.times = PhaseClock::instance().times();
  result.orders = run.planning.orders.count();
  result.peakMemory = peakMemory();
  return result;
}

}  // namespace corvane::bench
