#pragma once

#include <iosfwd>

#include "core/progress.h"
#include "generation/generation_settings.h"
#include "generation/pattern_random.h"
#include "generation/pattern_set.h"
#include "planning/planning_data.h"

namespace corvane {

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
