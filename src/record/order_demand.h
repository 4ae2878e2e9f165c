#pragma once

#include <QHash>
#include <filesystem>
#include <vector>

#include "app/run_parameters.h"
#include "record/record.h"

namespace corvane::record {

// A line of the machine file, without its weight.
struct CutterFact {
  QString mill;
  QString machine;
  QString grade;
  double deckle = 0;
  double capacity = 0;
  double wasteCost = 0;
};

// What the machine and the order file say, as the run's own readers read them, and the import file
// does not.
struct InputFacts {
  QHash<QString, QString> millOfMachine;  // by cutter name; the first line counts
  std::vector<CutterFact> cutters;        // in the order of the run's list of them
  std::vector<SeenDemand> seen;           // by grade, then widest first
};

// Reads the files of a run in the folder; empty where one of them cannot be opened. `periods` are
// those of the import file.
InputFacts readInputFacts(const RunParameters &parameters, const std::filesystem::path &folder,
                          const QStringList &periods);

}  // namespace corvane::record
