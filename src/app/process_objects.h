#pragma once

#include <fstream>

#include "app/planner.h"
#include "generation/pattern_random.h"

namespace corvane {

// The process-wide objects, constructed before main in the order in which they stand here and
// destroyed in reverse order at exit.
extern PatternRandom patternRandom;
extern PlanningComparators comparators;
extern RunRecord runRecord;
extern std::ofstream logStream;

}  // namespace corvane
