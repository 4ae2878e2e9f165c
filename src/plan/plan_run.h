#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "app/run_parameters.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// What a planner asks for; paths are UTF-8.
struct PlanRequest {
  std::string importFile;
  std::string outputFolder;  // made where it is missing
  ProblemOptions problem;
  std::vector<std::string> poolFiles;  // import files of other runs of the same mill
  // Of the run that wrote the import file, where a folder is planned.
  std::optional<RunParameters> mill;
  bool improve = false;           // price new patterns
  bool wholeReels = false;        // also without, where the file asks for it
  double gap = 0.0;               // of whole reels, relative to the bound
  double timeLimit = 0.0;         // seconds for each of reading, improving and planning; 0: none
  std::function<double()> clock;  // seconds, for improving; a steady clock where it is empty
  std::string mpsFile;            // empty: none
  bool quiet = false;             // no screen and no warnings
  bool timings = false;           // seconds in the record
  // The largest linear programme, in rows, beside which others are solved or patterns are priced
  // for advice: planners wait for no longer than about twice the time of the plan.
  int mostAdviceRows = 5000;
};

// Reads, plans, checks and writes. Returns the exit status: 0 with a plan, 1 without one. Throws
// network::Refused where a file cannot be planned, with nothing written.
int runPlan(const PlanRequest &request, std::ostream &out, std::ostream &err);

}  // namespace corvane::plan
