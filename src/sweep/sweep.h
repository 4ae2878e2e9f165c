#pragma once

#include <QString>
#include <iosfwd>

#include "sweep/engines.h"
#include "sweep/study.h"

namespace corvane::sweep {

struct SweepOptions {
  QString folder;  // where everything of the study goes
  EngineOptions engine;
  bool againFailed = false;  // make runs again that failed
};

// Makes all runs of the study that have no result yet, then the table of all (study.csv and
// study.json, best first), the plan with the patterns of all runs of the same data offered
// together, and a page that compares the best run with the worst. Says in a few lines what came
// out, and lists the runs that failed or are missing. True when every run is done.
bool sweep(const Study &study, const SweepOptions &options, const Programs &programs,
           std::ostream &out, std::ostream &err);

}  // namespace corvane::sweep
