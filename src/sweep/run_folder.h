#pragma once

#include <QString>

#include "sweep/run_settings.h"

namespace corvane::sweep {

// Where everything of a study lies: the runs, each in a folder named by its id, and the data files
// that runs read, which have a folder for all runs of the same data.
struct StudyFolder {
  QString path;

  QString run(const RunSettings &settings) const {
    return path + QLatin1String("/runs/") + settings.id;
  }
  QString inputs(const RunSettings &settings) const {
    return path + QLatin1String("/inputs/") + settings.dataId;
  }
};

// Makes the folders of the runs, those that are not there yet: in each data/Parameters.data, the
// mill's with the run's own values behind them, and a link to the folder of its data files. There
// the files are links to the mill's or the study's, and freight rates that are changed are a copy.
// Returns what went wrong, or an empty text.
QString makeFolders(const StudyFolder &folder, const Study &study,
                    const std::vector<RunSettings> &runs, const Mill &mill);

// The freight rates with each rate changed by the percentage; the rest of every line as it was.
QByteArray changeRates(const QByteArray &rates, double percent);

}  // namespace corvane::sweep
