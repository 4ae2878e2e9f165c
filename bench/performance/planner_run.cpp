#include "planner_run.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <numeric>
#include <stdexcept>

#include "app/parameter_file.h"
#include "app/planner.h"
#include "app/run_files.h"
#include "app/run_settings.h"
#include "export/model.h"
#include "generation/final_lp.h"
#include "generation/generate_patterns.h"
#include "interposed.h"
#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "resources.h"

namespace corvane::bench {

double RunResult::generation() const {
  const RunResult &run = *this;
  return run[Phase::kMasterSolver] + run[Phase::kPricing] + run[Phase::kGenerationRest];
}

double RunResult::selection() const {
  const RunResult &run = *this;
  return run[Phase::kFinalSolver] + run[Phase::kSolutions] + run[Phase::kFinalRest];
}

double RunResult::total() const {
  return std::accumulate(times.begin() + 1, times.end(), 0.0);
}

void RunResult::addTimes(const RunResult &other) {
  std::transform(times.begin(), times.end(), other.times.begin(), times.begin(), std::plus<>());
}

namespace {

double countPatterns(const PatternSets &sets) {
  double count = 0;
  for (const PatternCompPattern *set : sets.all) {
    count += set->patterns->count();
  }
  return count;
}

void readFiles(RunRecord &run, std::ostream &log) {
  const Step step(Phase::kReading);
  std::ifstream machines;
  std::ifstream orders;
  std::ifstream freightRates;
  readMachineFile(run.planning, run.parameters.machineFile, machines, log);
  readOrderFile(run.planning, run.parameters.orderFile, orders, log);
  readFreightRateFile(run.planning, run.parameters.freightRateFile, freightRates, log);
}

void planPatterns(const GenerationContext &context, RunResult &result) {
  {
    const Step step(Phase::kGenerationRest);
    generateAllColumns(context);
  }
  result.patterns = countPatterns(context.sets);
  {
    const Step step(Phase::kFinalRest);
    solveFinalLps(context);
  }
  {
    const Step step(Phase::kReport);
    chooseAndReportPatterns(context);
  }
  {
    const Step step(Phase::kPrune);
    prunePatterns(context.sets);
  }
  result.keptPatterns = countPatterns(context.sets);
}

void exportModel(const RunRecord &run, const ImportFileOfRun &import, std::ostream &log) {
  const Step step(Phase::kExport);
  std::ofstream file = import.open();
  writeModel(run.planning, run.patterns, exportSettings(run.parameters), file, log);
}

}  // namespace

RunResult runPlannerHere(LpRecording *recording) {
  recordLps(recording);
  RunResult result;
  PlanningComparators comparators;
  RunRecord run(comparators);
  PatternRandom random;
  ProgressLine progress;
  std::ofstream log;
  if (!readParameters(run.parameters, parameterFileName(), std::cout)) {
    throw std::runtime_error("no parameter file");
  }
  openLog(run.parameters, log);
  const ImportFileOfRun import(run.parameters);
  readFiles(run, log);
  result.readMemory = peakMemory();
  const GenerationSettings settings = generationSettings(run.parameters);
  planPatterns({run.planning, settings, run.patterns, random, log, progress}, result);
  exportModel(run, import, log);
  result.times = PhaseClock::instance().times();
  result.orders = run.planning.orders.count();
  result.peakMemory = peakMemory();
  return result;
}

}  // namespace corvane::bench
