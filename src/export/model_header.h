#pragma once

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

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
