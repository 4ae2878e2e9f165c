#pragma once

#include <iosfwd>

#include "core/progress.h"
#include "generation/pattern_random.h"
#include "generation/pattern_set.h"
#include "planning/planning_data.h"

namespace corvane {

// What pattern generation reads of the run parameters.
struct GenerationSettings {
  qint32 maximumWidthsInPattern = 5;      // 5 to 10
  double widthPickSetSize = 10.0;         // percent of the width list
  qint32 stopGeneratingThreshold = 1000;  // attempts a candidate
  qint32 newPatternsPerIteration = 100;   // candidates a deckle width and iteration
  qint32 timeLimit = -1;                  // seconds; negative: none, 0: no generation at all
  qint32 seed = -1;                       // negative: from the clock
  qint32 occurMin = 1;                    // patterns that each demand width should occur in
  bool barrier = false;                   // barrier method instead of the primal simplex
};

// What the steps of pattern generation work with; all of it outlives every step.
struct GenerationContext {
  const PlanningData &data;
  const GenerationSettings &settings;
  PatternSets &sets;
  PatternRandom &random;
  std::ostream &log;
  ProgressLine &progress;
};

}  // namespace corvane
