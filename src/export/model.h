#pragma once

#include <iosfwd>

#include "export/model_data.h"

namespace corvane {

// Writes the whole import file of a run, from the root command to the trailer; the log takes the
// freight rates that are missing. Gives the total demand in inches: quantity times width of every
// order written, 0 where the settings leave the orders out.
double writeModel(const PlanningData &planning, const PatternSets &patterns,
                  const ExportSettings &settings, std::ostream &out, std::ostream &log);

}  // namespace corvane
