#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "plan/plan_problem.h"

namespace corvane::plan {

// What a planner asks for; paths are UTF-8.
struct PlanRequest {
  std::string importFile;
  std::string outputFolder;  // made where it is missing
  ProblemOptions problem;
  std::vector<std::string> poolFiles;  // import files of other runs of the same mill
  double timeLimit = 0.0;              // seconds; 0: none
  std::string mpsFile;                 // empty: none
  bool quiet = false;                  // no screen and no warnings
  bool timings = false;                // seconds in the record
};

// Reads, plans, checks and writes. Returns the exit status: 0 with a plan, 1 without one. Throws
// network::Refused where a file cannot be planned, with nothing written.
int runPlan(const PlanRequest &request, std::ostream &out, std::ostream &err);

}  // namespace corvane::plan
