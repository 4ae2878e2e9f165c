#pragma once

#include <QString>

#include "sweep/run_settings.h"

namespace corvane::sweep {

// Where everything of a study lies: the runs, each in a folder named by its id, and data files that
// several of them read.
struct StudyFolder {
  QString path;

  QString run(const RunSettings &settings) const {
    return path + QLatin1String("/runs/") + settings.id;
  }
};

// Makes the folder of a run: data/Parameters.data, the mill's with the run's own values behind
// them, and links to the data files; freight rates that are changed stand once for all runs that
// read them, in the study's folder. Does nothing where the folder is there already. Returns what
// went wrong, or an empty text.
QString makeRunFolder(const StudyFolder &folder, const Study &study, const RunSettings &run,
                      const Mill &mill);

// The freight rates with each rate changed by the percentage; the rest of every line as it was.
QByteArray changeRates(const QByteArray &rates, double percent);

}  // namespace corvane::sweep
