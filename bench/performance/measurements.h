#pragma once

#include <filesystem>
#include <string>

#include "mill_generator.h"
#include "planner_run.h"
#include "pricing_replay.h"

namespace corvane::bench {

// A generated mill in a folder of its own, which goes with it.
class Mill {
 public:
  Mill(const MillShape &shape, const std::filesystem::path &parent);
  Mill(const Mill &) = delete;
  Mill &operator=(const Mill &) = delete;
  ~Mill();

  const std::filesystem::path &folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
};

// Each of these is measured in a process of its own.

RunResult measureRun(const Mill &mill);
// With literal pricing, and CLP's primal simplex over all columns.
RunResult measurePlainRun(const Mill &mill);

// The LPs of one run, solved again: seconds of processor time.
struct SolverTimes {
  double mastersLayer;
  double mastersPlain;  // one warm primal simplex over all columns
  double finalsLayer;
  double finalsPrimal;  // cold, over all columns
  double finalsDual;
};
SolverTimes measureSolver(const Mill &mill);

// The pricing of one run; see PricingReplay for what the mill must be.
PricingTimes measurePricing(const Mill &mill);

struct FileTimes {
  double work;       // of the program
  double reference;  // of reading and splitting, or writing and flushing, the same lines
  double bytes;      // of the import file, or of the memory at its peak
};
FileTimes measureReading(const Mill &mill);
FileTimes measureExport(const Mill &mill);

}  // namespace corvane::bench
