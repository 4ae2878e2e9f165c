#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "sweep/study.h"

namespace corvane::sweep {

// One run of a study: a value for each key that varies, in the order of the study.
struct RunSettings {
  QStringList values;
  // Tells the run from every other, in this study and in what becomes of it: the beginning of the
  // SHA-256 of its settings and of all bytes that it reads. A run whose inputs change is another
  // run.
  QString id;
  // The same of its data alone: the runs that can share their patterns are equal in it.
  QString dataId;
};

// The files of a mill, as its parameter file names them.
struct Mill {
  QString parameterFile;
  QString orderFile;
  QString machineFile;
  QString freightRateFile;
};

// The files of the mill in the folder, or what is wrong with them.
struct MillReading {
  Mill mill;
  QString fault;
};
MillReading readMill(const QString &folder);

// The data file that the run reads for a file key.
QString fileOf(const Study &study, const RunSettings &run, const QString &key, const Mill &mill);
// The value of a key in the run, or an empty text where it does not vary.
QString valueOf(const Study &study, const RunSettings &run, const QString &key);

// All combinations of the study's values, the first key slowest.
std::vector<RunSettings> allRuns(const Study &study, const Mill &mill);

}  // namespace corvane::sweep
