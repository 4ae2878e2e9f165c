#pragma once

#include <fstream>

#include "app/run_parameters.h"
#include "generation/pattern_random.h"
#include "generation/pattern_set.h"
#include "planning/planning_data.h"

namespace corvane {

// The run: its parameters and every collection that it fills. Steps get the piece that they read or
// fill.
struct RunRecord {
  explicit RunRecord(PlanningComparators &comparators) : planning(comparators) {}

  RunParameters parameters;
  PlanningData planning;
  PatternSets patterns;
};

// One run from start to end: reads the parameters and the data files, generates patterns, writes
// the import file and the log. The log stream is unopened. Returns 0; a fault ends the process with
// exit status 1.
int runPlanner(RunRecord &run, PatternRandom &random, std::ofstream &log);

// The run of the process-wide objects. Running out of memory ends it like any other fault.
int runProcess() noexcept;

}  // namespace corvane
