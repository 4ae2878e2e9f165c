// Many runs of one mill, and what comes out of each.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <iostream>
#include <limits>

#include "core/text.h"
#include "programs/command_line.h"
#include "sweep/sweep.h"

namespace corvane {
namespace {

QString text(const char *words) {
  return QString::fromUtf8(words);
}

CommandLine commandLine() {
  return CommandLine(
      {text("corvane-sweep"), text("STUDY"),
       text("Makes the runs of a study, corvane and then corvane-plan, and compares them. Started\n"
            "again, it makes only those that have no result yet."),
       std::numeric_limits<int>::max()},
      {{{text("o"), text("output")},
        text("FOLDER"),
        text("where the runs and tables go; default: STUDY's name and \"-study\"")},
       {{text("engine")}, text("NAME"), text("parallel (GNU parallel, the default) or slurm")},
       {{text("j"), text("jobs")},
        text("N"),
        text("runs at a time; default: as many as there are processors")},
       {{text("sshloginfile")}, text("FILE"), text("other machines, as GNU parallel reads them")},
       {{text("again-failed")}, {}, text("make runs again that failed")},
       {{text("make-run")}, {}, text("make the runs in the folders named; the engines call this")},
       {{text("plan-options")}, text("OPTIONS"), text("of corvane-plan, with --make-run")}});
}

// A program of this family: beside this one, or wherever the system finds it.
QString sibling(const QString &name) {
  const QString folder = QFileInfo(QFile::symLinkTarget(text("/proc/self/exe"))).path();
  const QString beside = folder + QLatin1Char('/') + name;
  return QFile::exists(beside) ? beside : name;
}

sweep::Programs programs() {
  return {sibling(text("corvane")), sibling(text("corvane-plan")), sibling(text("corvane-report")),
          sibling(text("corvane-sweep"))};
}

int makeRuns(const CommandLine &line) {
  const QStringList options =
      line.value(text("plan-options")).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  bool good = true;
  for (const QString &folder : line.arguments()) {
    good = sweep::makeRun(folder, programs(), options) && good;
  }
  return good ? 0 : 1;
}

// What is wrong with the options of the engine, or an empty text.
QString takeEngine(const CommandLine &line, sweep::EngineOptions &engine) {
  if (line.has(text("engine"))) {
    engine.name = line.value(text("engine"));
  }
  if (engine.name != QLatin1String("parallel") && engine.name != QLatin1String("slurm")) {
    return text("The engine is parallel or slurm.");
  }
  bool valid = true;
  engine.jobs = line.has(text("jobs")) ? line.value(text("jobs")).toInt(&valid) : 0;
  engine.sshLoginFile = line.value(text("sshloginfile"));
  return valid && engine.jobs >= 0 ? QString() : text("--jobs wants a whole number.");
}

int runStudy(const CommandLine &line) {
  const QString name = line.arguments().front();
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) {
    return line.refuse(name + text(" cannot be read: ") + file.errorString(), std::cerr);
  }
  const QFileInfo info(name);
  const sweep::StudyReading reading =
      sweep::readStudy(QString::fromUtf8(file.readAll()), info.absolutePath());
  for (const QString &fault : reading.faults) {
    std::cerr << utf8(name) << ": " << utf8(fault) << std::endl;
  }
  sweep::SweepOptions options;
  const QString objection = takeEngine(line, options.engine);
  if (!reading.faults.isEmpty() || !objection.isEmpty()) {
    return objection.isEmpty() ? kExitUsage : line.refuse(objection, std::cerr);
  }
  options.againFailed = line.has(text("again-failed"));
  options.folder = line.has(text("output")) ? line.value(text("output"))
                                            : info.absolutePath() + QLatin1Char('/') +
                                                  info.completeBaseName() + text("-study");
  return sweep::sweep(reading.study, options, programs(), std::cout, std::cerr) ? 0 : 1;
}

int run(int argc, char **argv) {
  CommandLine line = commandLine();
  if (const auto status = line.parse(argc, argv, std::cout, std::cerr)) {
    return *status;
  }
  if (line.has(text("make-run"))) {
    return makeRuns(line);
  }
  if (line.arguments().size() != 1) {
    return line.refuse(text("One study file is wanted."), std::cerr);
  }
  return runStudy(line);
}

}  // namespace
}  // namespace corvane

int main(int argc, char **argv) {
  return corvane::run(argc, argv);
}
