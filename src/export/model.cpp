#include "export/model.h"

#include <vector>

#include "core/skip_list_cursor.h"
#include "export/block_nodes.h"
#include "export/machine_nodes.h"
#include "export/pattern_nodes.h"
#include "export/storage_nodes.h"

namespace corvane {

namespace {

// Every demand width of the table once. The set orders them; it holds no numbers of its own, so
// they are gathered here. Widths of one grade are told apart before they are searched in the set.
std::vector<double> gatherDemandWidths(const ModelData &data) {
  std::vector<double> widths;
  for (const GradeDemand &grade : data.planning.demand.grades) {
    widths.insert(widths.end(), grade.widths.begin(), grade.widths.end());
  }
  return widths;
}

}  // namespace

void writeRoot(const ModelData &data, ImportFile &file) {
  if (data.settings.hasBatchNodes()) {
    file.line(
        "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> True "
        "<initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
        "<batchTuneStopThreshold> 0 <batchTuneTries> 99999 <batchSizeMode> 1 "
        "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5");
  } else {
    file.line(
        "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> False "
        "<initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
        "<batchTuneStopThreshold> 100 <batchTuneTries> 99999 <batchSizeMode> 0 "
        "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5");
  }
}

void writeCommodities(const ModelData &data, ImportFile &file) {
  for (const double width : data.planning.cutterWidths) {
    file.line("addcommodity <name> \"Deckle", width, "\"");
  }
  std::vector<double> widths = gatherDemandWidths(data);
  skipList<double> ordered(&data.planning.comparators.number, false);
  for (double &width : widths) {
    ordered.insert(&width);
  }
  forEachElement(
      ordered, [&](double width) { file.line("addcommodity <name> \"DemandWidth", width, "\""); });
  file.line("addcommodity <name> \"Waste\"");
  file.line("addcommodity <name> \"Machine_Time\"");
}

void writePeriods(const ModelData &data, ImportFile &file) {
  for (const std::string &period : data.periods) {
    file.line("addperiod <name> ", period);
  }
}

void writeTrailer(ImportFile &file) {
  file.line("# End of Corvane. import file.");
}

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
