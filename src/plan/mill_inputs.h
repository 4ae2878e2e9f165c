#pragma once

#include "app/run_parameters.h"
#include "planning/planning_data.h"

namespace corvane::plan {

// The machine, order and freight rate files of a run, read once more by the readers of the run.
// What they say goes to standard error. A file that cannot be opened ends the process with status
// 1, as it does the run.
class MillInputs {
 public:
  explicit MillInputs(RunParameters parameters);

  const RunParameters &parameters() const { return parameters_; }
  const PlanningData &planning() const { return planning_; }

 private:
  RunParameters parameters_;
  PlanningComparators comparators_;
  PlanningData planning_;
};

}  // namespace corvane::plan
