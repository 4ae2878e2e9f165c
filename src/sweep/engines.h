#pragma once

#include <QString>
#include <QStringList>

#include "sweep/run_one.h"

namespace corvane::sweep {

// How runs are spread over processors and machines. The engines are other people's programs, which
// start this program's --make-run on the folders of the runs that have no result yet.
struct EngineOptions {
  QString name = QStringLiteral("parallel");  // or "slurm"
  int jobs = 0;                               // at a time; 0: as many as the machine has processors
  QString sshLoginFile;                       // of GNU parallel, passed on
};

// Makes the runs in the folders, some at a time in one job, since starting one costs more than a
// small run. Returns what went wrong with the engine itself, or an empty text; which runs have a
// result is another question.
QString makeRuns(const QStringList &runFolders, const QString &studyFolder,
                 const EngineOptions &engine, const Programs &programs,
                 const QStringList &planOptions);

}  // namespace corvane::sweep
