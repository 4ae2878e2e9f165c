#pragma once

#include "lp_recording.h"
#include "phase_clock.h"

namespace corvane::bench {

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

// Runs the program's steps on the mill in the working directory, each with its clock. The
// recording, where there is one, takes the LPs.
RunResult runPlannerHere(LpRecording *recording = nullptr);

}  // namespace corvane::bench
