#include "checks/mill_check.h"

#include "checks/mill_checks.h"

namespace corvane::checks {

namespace {

class MillCheck {
 public:
  MillCheck(const std::filesystem::path &folder, const ReadBytes &read, FindingSink &sink,
            CheckedMill &mill)
      : folder_(folder), read_(read), sink_(sink), mill_(mill) {}

  bool run(const NamedPath &parameterFile) {
    MillRecords &records = mill_.records;
    records.parameterFile.file = load(parameterFile);
    if (records.parameterFile.file == nullptr) {
      return false;
    }
    lines_ = readParameterFile(records, sink_);
    if (records.parameterFile.isUsable()) {
      checkPaths(records, lines_, parameterFile, folder_, sink_);
    }
    const RunParameters &parameters = records.parameters;
    if (loadData(records.machineFile, "machine file", parameters.machineFile)) {
      readMachines(records, sink_);
    }
    if (loadData(records.orderFile, "order file", parameters.orderFile)) {
      readOrders(records, sink_);
    }
    if (loadData(records.rateFile, "freight rate file", parameters.freightRateFile)) {
      readRates(records, sink_);
    }
    const MillIndex index(records);
    checkRecords({records, index, sink_});
    mill_.summary = summarize(records, index);
    return true;
  }

 private:
  const SourceFile *load(const NamedPath &path) {
    std::string bytes;
    if (!read_(path, bytes)) {
      return nullptr;
    }
    mill_.paths.push_back(path);
    return &mill_.files.emplace_back(path.shown, std::move(bytes));
  }

  bool loadData(FileRecords &records, const char *key, const QString &name) {
    const NamedPath path = namedPath(name, folder_);
    records.file = load(path);
    if (records.file == nullptr) {
      reportMissing(mill_.records, lines_, QString::fromLatin1(key), path, sink_);
    }
    return records.file != nullptr;
  }

  static void checkRecords(const MillView &view) {
    if (view.hasMachines()) {
      checkMachines(view);
    }
    if (view.hasOrders()) {
      checkDroppedOrders(view);
      checkPeriods(view);
      checkWidths(view);
      checkDemands(view);
      if (view.hasMachines()) {
        checkLoads(view);
      }
    }
    if (view.hasRates()) {
      checkRates(view);
    }
    if (view.hasMachines() && view.hasOrders() && view.hasRates()) {
      checkWays(view);
      checkNearNames(view);
      checkNodeNames(view);
    }
  }

  const std::filesystem::path &folder_;
  const ReadBytes &read_;
  FindingSink &sink_;
  CheckedMill &mill_;
  ParameterLines lines_;
};

}  // namespace

bool checkMill(const NamedPath &parameterFile, const std::filesystem::path &folder,
               const ReadBytes &read, FindingSink &sink, CheckedMill &mill) {
  return MillCheck(folder, read, sink, mill).run(parameterFile);
}

}  // namespace corvane::checks
