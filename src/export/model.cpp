#include "export/model.h"

#include "export/block_nodes.h"
#include "export/import_file.h"
#include "export/machine_nodes.h"
#include "export/model_header.h"
#include "export/pattern_nodes.h"
#include "export/storage_nodes.h"

namespace corvane {

double writeModel(const PlanningData &planning, const PatternSets &patterns,
                  const ExportSettings &settings, std::ostream &out, std::ostream &log) {
  const ModelData data(planning, patterns, settings);
  ImportFile file(out);
  writeRoot(data, file);
  writeCommodities(data, file);
  writePeriods(data, file);
  double totalDemand = 0;
  if (settings.patternsOnly) {
    writePatternNodes(data, file);
  } else {
    writeMachineNodes(data, file);
    writePatternNodes(data, file);
    writeStorageDemand(data, file);
    totalDemand = writeBlocks(data, file, log);
  }
  writeTrailer(file);
  return totalDemand;
}

}  // namespace corvane
