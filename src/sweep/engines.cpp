#include "sweep/engines.h"

#include <algorithm>
#include <thread>

#include "processes/child_process.h"
#include "sweep/whole_file.h"

namespace corvane::sweep {

namespace {

// A job of so many runs ends soon enough for the others to share what is left.
constexpr qsizetype kMostRunsInJob = 25;
constexpr qsizetype kJobsForEachProcessor = 4;
// Slurm's default for the tasks of one array is 1001.
constexpr qsizetype kMostTasks = 1000;

qsizetype processors(const EngineOptions &engine) {
  return engine.jobs > 0 ? engine.jobs
                         : std::max<qsizetype>(1, std::thread::hardware_concurrency());
}

// In single quotes, as a shell takes any text.
QString shellWord(QString text) {
  return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
         QLatin1Char('\'');
}

// "corvane-sweep --make-run --plan-options ...", to which folders are added.
QStringList makeRunWords(const Programs &programs, const QStringList &planOptions) {
  QStringList words{programs.self, QStringLiteral("--make-run")};
  if (!planOptions.isEmpty()) {
    words << QStringLiteral("--plan-options") << planOptions.join(QLatin1Char(' '));
  }
  return words;
}

// What the engine itself says.
QString logOf(const QString &studyFolder) {
  return studyFolder + QLatin1String("/engine.log");
}

// GNU parallel reads the folders from a list, one a line, and gives each job some of them.
QString runParallel(const QStringList &runFolders, const QString &studyFolder,
                    const EngineOptions &engine, const Programs &programs,
                    const QStringList &planOptions) {
  const QString list = studyFolder + QLatin1String("/pending");
  if (!writeWhole(list, (runFolders.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8())) {
    return QStringLiteral("%1 cannot be written").arg(list);
  }
  const qsizetype inJob = std::clamp<qsizetype>(
      runFolders.size() / (kJobsForEachProcessor * processors(engine)), 1, kMostRunsInJob);
  QStringList words{QStringLiteral("parallel"), QStringLiteral("--will-cite"),
                    QStringLiteral("--plain"), QStringLiteral("-N"), QString::number(inJob)};
  if (engine.jobs > 0) {
    words << QStringLiteral("--jobs") << QString::number(engine.jobs);
  }
  if (!engine.sshLoginFile.isEmpty()) {
    words << QStringLiteral("--sshloginfile") << engine.sshLoginFile;
  }
  words << QStringLiteral("--quote") << makeRunWords(programs, planOptions);
  // Its exit status counts the jobs that failed; the runs without a result tell which.
  ChildRequest request = loggedRequest(words, logOf(studyFolder));
  request.input = list.toStdString();
  return runChild(request).started
             ? QString()
             : QStringLiteral("GNU parallel cannot be started (package \"parallel\")");
}

// One line of the list a task: the folders of its runs.
QString taskList(const QStringList &runFolders, qsizetype tasks) {
  QStringList lines;
  for (qsizetype task = 0; task < tasks; ++task) {
    QStringList words;
    for (qsizetype run = task; run < runFolders.size(); run += tasks) {
      words << shellWord(runFolders[run]);
    }
    lines << words.join(QLatin1Char(' '));
  }
  return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString slurmScript(const QString &list, const Programs &programs, const QStringList &planOptions) {
  QStringList words;
  for (const QString &word : makeRunWords(programs, planOptions)) {
    words << shellWord(word);
  }
  return QStringLiteral("#!/bin/sh\neval %1 \"$(sed -n \"${SLURM_ARRAY_TASK_ID}p\" %2)\"\n")
      .arg(shellWord(words.join(QLatin1Char(' '))), shellWord(list));
}

QString runSlurm(const QStringList &runFolders, const QString &studyFolder,
                 const EngineOptions &engine, const Programs &programs,
                 const QStringList &planOptions) {
  const qsizetype tasks = std::min(runFolders.size(), kMostTasks);
  const QString list = studyFolder + QLatin1String("/pending");
  const QString script = studyFolder + QLatin1String("/engine.sh");
  if (!writeWhole(list, taskList(runFolders, tasks).toUtf8()) ||
      !writeWhole(script, slurmScript(list, programs, planOptions).toUtf8())) {
    return QStringLiteral("%1 cannot be written to").arg(studyFolder);
  }
  QString array = QStringLiteral("1-%1").arg(tasks);
  array += engine.jobs > 0 ? QStringLiteral("%%1").arg(engine.jobs) : QString();
  const QStringList words{QStringLiteral("sbatch"),
                          QStringLiteral("--wait"),
                          QStringLiteral("--array"),
                          array,
                          QStringLiteral("--output"),
                          studyFolder + QLatin1String("/engine-%a.log"),
                          script};
  return runChild(loggedRequest(words, logOf(studyFolder))).started
             ? QString()
             : QStringLiteral("Slurm's sbatch cannot be started");
}

}  // namespace

QString makeRuns(const QStringList &runFolders, const QString &studyFolder,
                 const EngineOptions &engine, const Programs &programs,
                 const QStringList &planOptions) {
  if (runFolders.isEmpty()) {
    return {};
  }
  return engine.name == QLatin1String("slurm")
             ? runSlurm(runFolders, studyFolder, engine, programs, planOptions)
             : runParallel(runFolders, studyFolder, engine, programs, planOptions);
}

}  // namespace corvane::sweep
