#pragma once

#include <iosfwd>

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// Writes the whole import file of a run, from the root command to the trailer; the log takes the
// freight rates that are missing. Gives the total demand in inches: quantity times width of every
// order written, 0 where the settings leave the orders out.
double writeModel(const PlanningData &planning, const PatternSets &patterns,
                  const ExportSettings &settings, std::ostream &out, std::ostream &log);

// The opening of the import file and its last line.
//
//   addroot <CompressBlockNodes> True <batchSizeSolve> False ...
//   addcommodity <name> "Deckle120"        one for each deckle width, ascending
//   addcommodity <name> "DemandWidth30.5"  one for each demand width, ascending
//   addcommodity <name> "Waste"
//   addcommodity <name> "Machine_Time"
//   addperiod <name> "1"                   one for each period
//   ...
//   # End of Corvane. import file.

void writeRoot(const ModelData &data, ImportFile &file);
void writeCommodities(const ModelData &data, ImportFile &file);
void writePeriods(const ModelData &data, ImportFile &file);
void writeTrailer(ImportFile &file);

}  // namespace corvane
