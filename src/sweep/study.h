#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace corvane::sweep {

// Something that varies over a study, with all its values.
struct Variation {
  QString key;
  QStringList values;
};

// A study: one mill, and what varies over its runs.
struct Study {
  QString mill;             // its folder
  QStringList planOptions;  // for every corvane-plan, beside those that the study needs
  std::vector<Variation> variations;
};

// A study file is lines "KEY = VALUES"; those that begin with "#" are comments. Keys:
//
//   mill                 the mill's folder, from the study file's; default: that folder itself
//   plan options         options of corvane-plan, for every run
//   freight              changes of all freight rates, in percent: "-10 %, 0 %, +10 %"
//   order file, machine file, freight rate file
//                        files in place of the mill's, from the study file's folder; "as it is" for
//                        the mill's own
//   seed                 the same as "rand num gen seed"
//   any other parameter  as in the parameter file
//
// Values are separated by commas; "1..10" stands for the whole numbers from 1 to 10.
struct StudyReading {
  Study study;
  QStringList faults;  // with their line numbers; empty when all of it was understood
};
StudyReading readStudy(const QString &text, const QString &folder);

// Keys that are no parameters.
inline const QString kFreightKey = QStringLiteral("freight");
// The value of a file key that leaves the mill's own file.
inline const QString kAsItIs = QStringLiteral("as it is");
// True for the keys whose values are data files.
bool isFileKey(const QString &key);

}  // namespace corvane::sweep
