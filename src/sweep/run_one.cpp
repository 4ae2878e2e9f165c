#include "sweep/run_one.h"

#include <QDir>
#include <QFile>
#include <chrono>

#include "processes/child_process.h"
#include "sweep/run_result.h"

namespace corvane::sweep {

namespace {

QString lastLineOf(const QString &name) {
  QFile file(name);
  const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
  return QString::fromUtf8(text.mid(text.lastIndexOf('\n') + 1));
}

// The number that the log's last section ends with.
double patternsInModel(const QString &runFolder) {
  QFile file(runFolder + QLatin1String("/data/corvane.log"));
  const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  const QByteArray label = "Total number of patterns in model:";
  const qsizetype at = text.lastIndexOf(label);
  return at < 0 ? 0 : text.mid(at + label.size(), 24).split('\n').front().trimmed().toDouble();
}

void removeWhatARunLeaves(const QString &runFolder) {
  QFile::remove(runFolder + QLatin1String("/data/CV.imp"));
  QFile::remove(runFolder + QLatin1String("/data/corvane.log"));
  QDir(runFolder + QLatin1String("/plan")).removeRecursively();
}

// One program in the run's folder; what it says goes into a file of its name there.
ChildEnd runProgram(const QString &runFolder, const QString &name, const QStringList &words) {
  ChildRequest request;
  for (const QString &word : words) {
    request.words.push_back(word.toStdString());
  }
  request.folder = runFolder.toStdString();
  request.output = (runFolder + QLatin1Char('/') + name + QLatin1String(".out")).toStdString();
  request.error = (runFolder + QLatin1Char('/') + name + QLatin1String(".err")).toStdString();
  request.withoutVariable = "ZEM_CVN_PARAM";
  return runChild(request);
}

// What a program that failed said last.
QString messageOf(const QString &runFolder, const QString &name) {
  const QString error = lastLineOf(runFolder + QLatin1Char('/') + name + QLatin1String(".err"));
  return error.isEmpty() ? lastLineOf(runFolder + QLatin1Char('/') + name + QLatin1String(".out"))
                         : error;
}

// Runs both programs; false when one of them did not end by itself.
bool runBoth(const QString &runFolder, const Programs &programs, const QStringList &planOptions,
             RunResult &result) {
  const QString planner = QStringLiteral("corvane");
  const QString plan = QStringLiteral("corvane-plan");
  ChildEnd end = runProgram(runFolder, planner, {programs.planner});
  result.plannerStatus = end.status;
  if (!end.isGood()) {
    result.message = messageOf(runFolder, planner);
    return end.exited;
  }
  const QStringList words{
      programs.plan,        QStringLiteral("--import-file"), QStringLiteral("data/CV.imp"),
      QStringLiteral("-o"), QStringLiteral("plan"),          QStringLiteral("--quiet")};
  end = runProgram(runFolder, plan, words + planOptions);
  result.planStatus = end.status;
  result.message = end.isGood() ? QString() : messageOf(runFolder, plan);
  return end.exited;
}

}  // namespace

bool makeRun(const QString &runFolder, const Programs &programs, const QStringList &planOptions) {
  if (readResult(runFolder)) {
    return true;
  }
  removeWhatARunLeaves(runFolder);
  RunResult result;
  const auto start = std::chrono::steady_clock::now();
  if (!runBoth(runFolder, programs, planOptions, result)) {
    return false;
  }
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  if (result.isDone()) {
    result.figures = readPlanTotals(runFolder + QLatin1String("/plan"));
    result.figures[QStringLiteral("patterns")] = patternsInModel(runFolder);
  }
  return writeResult(runFolder, result);
}

}  // namespace corvane::sweep
