#pragma once

#include "lp_recording.h"
#include "phase_clock.h"

namespace corvane::bench {

// How a run of the planner is made.
struct RunKind {
  bool literalPricing = false;
  const char *solver = nullptr;  // the value of CORVANE_LP_PLAIN, or null for none
};

// What a run took. Plain data, to be handed from one process to another.
struct RunResult {
  PhaseTimes times{};       // seconds of processor time
  double orders = 0;        // after merging
  double patterns = 0;      // before pruning
  double keptPatterns = 0;  // after it
  double peakMemory = 0;    // bytes, of the whole run
  double readMemory = 0;    // bytes, when the files had been read

  double operator[](Phase phase) const { return times[static_cast<std::size_t>(phase)]; }
  // All phases of column generation; of the final selection; of both; and all phases there are.
  double generation() const;
  double selection() const;
  double planning() const { return generation() + selection(); }
  double total() const;

  // Adds the times of another run, and nothing else.
  void addTimes(const RunResult &other);
};

// Runs the planner on the mill in the working directory. The recording, where there is one, takes
// the LPs.
RunResult runPlannerHere(const RunKind &kind, LpRecording *recording = nullptr);

}  // namespace corvane::bench
