#pragma once

#include "app/run_parameters.h"
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

}  // namespace corvane
