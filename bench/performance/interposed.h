#pragma once

#include <memory>

#include "lp_recording.h"
#include "phase_clock.h"
#include "planner_run.h"

namespace corvane::bench {

// What stands behind the program's calls, for this process.
struct Interposed {
  bool literalPricing = false;       // the literal pricing instead of the program's
  LpRecording *recording = nullptr;  // takes every LP that the program solves
  RunResult *result = nullptr;       // takes the counts
  std::unique_ptr<Step> exporting;   // from its first line to the end of the run
};

Interposed &interposed();

}  // namespace corvane::bench
