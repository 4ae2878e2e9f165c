#pragma once

#include <fstream>

#include "app/run_record.h"
#include "generation/pattern_random.h"

namespace corvane {

// One run from start to end: reads the parameters and the data files, generates patterns, writes
// the import file and the log. The log stream is unopened. Returns 0; a fault ends the process with
// exit status 1.
int runPlanner(RunRecord &run, PatternRandom &random, std::ofstream &log);

// The run of the process-wide objects. Running out of memory ends it like any other fault.
int runProcess() noexcept;

}  // namespace corvane
