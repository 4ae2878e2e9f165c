#include "sweep/run_one.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <cerrno>
#include <chrono>

#include "processes/child_process.h"
#include "sweep/run_result.h"
#include "sweep/whole_file.h"

namespace corvane::sweep {

namespace {

// Where corvane-plan writes by default, and corvane-report looks.
QString planFolderOf(const QString &runFolder) {
  return runFolder + QLatin1String("/data/plan");
}

QString lastLineOf(const QString &name) {
  const QByteArray text = readWhole(name).trimmed();
  return QString::fromUtf8(text.mid(text.lastIndexOf('\n') + 1));
}

// The number that the log's last section ends with.
double patternsInModel(const QString &runFolder) {
  const QByteArray text = readWhole(runFolder + QLatin1String("/data/corvane.log"));
  const QByteArray label = "Total number of patterns in model:";
  const qsizetype at = text.lastIndexOf(label);
  return at < 0 ? 0 : text.mid(at + label.size(), 24).split('\n').front().trimmed().toDouble();
}

// Keeps other processes from the run while this one makes it: an engine may outlive the sweep that
// started it, and the next sweep starts another. The programs that are started hold it too, so that
// one whose starter was killed is waited for. Where a file system has no locks there is none.
class RunLock {
 public:
  explicit RunLock(const QString &runFolder)
      : descriptor_(open(QFile::encodeName(runFolder).constData(), O_RDONLY | O_DIRECTORY)) {
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  RunLock(const RunLock &) = delete;
  RunLock &operator=(const RunLock &) = delete;
  ~RunLock() {
    if (descriptor_ >= 0) {
      close(descriptor_);
    }
  }

 private:
  int descriptor_;
};

void removeWhatARunLeaves(const QString &runFolder) {
  QFile::remove(runFolder + QLatin1String("/data/CV.imp"));
  QFile::remove(runFolder + QLatin1String("/data/corvane.log"));
  QDir(planFolderOf(runFolder)).removeRecursively();
}

// Where a program leaves what it says.
QString saidBy(const QString &runFolder, const QString &name) {
  return runFolder + QLatin1Char('/') + name + QLatin1String(".out");
}

ChildEnd runProgram(const QString &runFolder, const QString &name, const QStringList &words) {
  ChildRequest request = loggedRequest(words, saidBy(runFolder, name));
  request.folder = runFolder.toStdString();
  request.withoutVariable = "ZEM_CVN_PARAM";
  return runChild(request);
}

// Runs both programs; false when one of them did not end by itself.
bool runBoth(const QString &runFolder, const Programs &programs, const QStringList &planOptions,
             RunResult &result) {
  const QString planner = QStringLiteral("corvane");
  const QString plan = QStringLiteral("corvane-plan");
  ChildEnd end = runProgram(runFolder, planner, {programs.planner});
  result.plannerStatus = end.status;
  if (!end.isGood()) {
    result.message = lastLineOf(saidBy(runFolder, planner));
    return end.exited;
  }
  const QStringList words{programs.plan, QStringLiteral("--import-file"),
                          QStringLiteral("data/CV.imp"), QStringLiteral("--quiet")};
  end = runProgram(runFolder, plan, words + planOptions);
  result.planStatus = end.status;
  result.message = end.isGood() ? QString() : lastLineOf(saidBy(runFolder, plan));
  return end.exited;
}

}  // namespace

bool makeRun(const QString &runFolder, const Programs &programs, const QStringList &planOptions) {
  const RunLock lock(runFolder);
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
    result.figures = readPlanTotals(planFolderOf(runFolder));
    result.figures[QStringLiteral("patterns")] = patternsInModel(runFolder);
  }
  return writeResult(runFolder, result);
}

}  // namespace corvane::sweep
