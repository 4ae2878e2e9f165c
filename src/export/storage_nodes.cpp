#include "export/storage_nodes.h"

#include "core/text.h"
#include "export/names.h"
#include "export/waste_nodes.h"

namespace corvane {

namespace {

void writeStorageNode(const ModelData &data, ImportFile &file, const std::string &store,
                      quint32 y) {
  std::string coordinates = coordinatesAt(data.columns.storage, y);
  for (const std::string &period : data.periods) {
    file.line("addnode <type> \"StorageDemand\" <name> ", store, coordinates,
              " <storagemax> 0 <period> ", period);
    coordinates.clear();
  }
}

}  // namespace

void writeStorageDemand(const ModelData &data, ImportFile &file) {
  quint32 row = 0;
  forEachPlannedCutter(data,
                       [&](const Cutter &cutter) { writeCutterStorage(data, file, cutter, row); });
  for (const QString &grade : data.planning.grades) {
    writeWasteDemandNode(data, file, grade, row);
  }
  forEachPlannedCutter(data, [&](const Cutter &cutter) { writeCutterArcs(data, file, cutter); });
}

void writeCutterStorage(const ModelData &data, ImportFile &file, const Cutter &cutter,
                        quint32 &storageRow) {
  const std::string set = utf8(cutterSetName(cutter));
  for (const double width : data.planning.demandWidthsOf(cutter.grade)) {
    const std::string store = utf8(cutterValueName(cutter, width));
    writeStorageNode(data, file, store, kStorageRowStep * storageRow);
    file.line("addattach <node> ", store, " <commodity> \"DemandWidth", width, "\" <in> True");
    file.line("addattach <node> ", store, " <commodity> \"DemandWidth", width, "\" <in> False");
    file.line("addnodetoset ", set, " ", store);
  }
  file.line("blockset ", set);
  writeBlockNode(file, set, data.columns.storage, kStorageBlockRowStep * storageRow,
                 data.periods.front());
  ++storageRow;
}

void writeBlockNode(ImportFile &file, const std::string &name, int x, quint32 y,
                    const std::string &period) {
  file.line("addnode <type> \"Block\" <name> ", name,
            " <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0",
            coordinatesAt(x, y),
            " <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False "
            "<sourcingChange> True <node> \"None\"",
            period.empty() ? "" : " <period> ", period);
}

}  // namespace corvane
