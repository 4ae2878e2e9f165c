#pragma once

#include <QString>
#include <QStringList>

namespace corvane::sweep {

// Where the programs are.
struct Programs {
  QString planner;  // corvane
  QString plan;     // corvane-plan
  QString report;   // corvane-report
  QString self;     // corvane-sweep
};

// Runs the planner in the run's folder and then corvane-plan on what it wrote, and leaves the
// result there. A run that has a result is left alone. Where a signal ends one of the programs no
// result is left, so that the run is made again. A run that another process is making is waited
// for. False when there is no result in the end.
bool makeRun(const QString &runFolder, const Programs &programs, const QStringList &planOptions);

}  // namespace corvane::sweep
