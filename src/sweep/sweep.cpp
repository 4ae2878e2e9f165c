#include "sweep/sweep.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <fstream>
#include <functional>
#include <map>
#include <ostream>

#include "core/text.h"
#include "processes/child_process.h"
#include "sweep/run_folder.h"
#include "sweep/study_table.h"

namespace corvane::sweep {

namespace {

// More than these in a list say nothing new.
constexpr std::size_t kShownFailures = 10;

bool fail(std::ostream &err, const QString &why) {
  err << "corvane-sweep: " << utf8(why) << std::endl;
  return false;
}

std::string runName(const Study &study, const RunSettings &run) {
  QStringList words;
  for (std::size_t i = 0; i < study.variations.size(); ++i) {
    words << study.variations[i].key + QLatin1Char('=') + run.values[static_cast<qsizetype>(i)];
  }
  return utf8(run.id + (words.isEmpty() ? QString() : QLatin1String(" (")) +
              words.join(QLatin1String(", ")) +
              (words.isEmpty() ? QString() : QStringLiteral(")")));
}

bool writeFile(const QString &name, const std::function<void(std::ostream &)> &write) {
  std::ofstream file(utf8(name), std::ios::binary);
  write(file);
  file.close();
  return file.good();
}

// One sweep, step by step.
class Sweep {
 public:
  Sweep(const Study &study, const SweepOptions &options, const Programs &programs,
        std::ostream &out, std::ostream &err)
      : study_(study), options_(options), programs_(programs), out_(out), err_(err) {}

  bool run() {
    const MillReading mill = readMill(study_.mill);
    if (!mill.fault.isEmpty()) {
      return fail(err_, mill.fault);
    }
    folder_.path = QDir(options_.folder).absolutePath();
    runs_ = allRuns(study_, mill.mill);
    const QString fault = makeFolders(folder_, study_, runs_, mill.mill);
    if (!fault.isEmpty()) {
      return fail(err_, fault);
    }
    if (!makePending()) {
      return false;
    }
    readResults();
    sortBestFirst(rows_);
    poolPatterns();
    if (!writeTables()) {
      return fail(err_, QStringLiteral("%1 cannot be written to").arg(folder_.path));
    }
    makePages();
    return report();
  }

 private:
  // Whether the run needs to be made. Takes away the result of a run that is to be made again.
  bool isPending(const RunSettings &run) const {
    const auto result = readResult(folder_.run(run));
    if (result && !result->isDone() && options_.againFailed) {
      QFile::remove(folder_.run(run) + QLatin1String("/result.json"));
      return true;
    }
    return !result;
  }

  bool makePending() {
    QStringList pending;
    QSet<QString> seen;
    for (const RunSettings &run : runs_) {
      if (!seen.contains(run.id) && isPending(run)) {
        pending << folder_.run(run);
      }
      seen.insert(run.id);
    }
    out_ << runs_.size() << " runs, " << pending.size() << " to make" << std::endl;
    const QString fault =
        makeRuns(pending, folder_.path, options_.engine, programs_, study_.planOptions);
    return fault.isEmpty() || fail(err_, fault);
  }

  void readResults() {
    for (const RunSettings &run : runs_) {
      rows_.push_back({run, readResult(folder_.run(run))});
    }
  }

  // The done runs of each kind of data, best first.
  std::map<QString, std::vector<const StudyRow *>> runsOfSameData() const {
    std::map<QString, std::vector<const StudyRow *>> groups;
    for (const StudyRow &row : rows_) {
      if (row.isDone()) {
        groups[row.run.dataId].push_back(&row);
      }
    }
    return groups;
  }

  void poolPatterns() {
    for (const auto &[dataId, rows] : runsOfSameData()) {
      if (rows.size() > 1) {
        pooled_.push_back(pool(dataId, rows));
      }
    }
  }

  PooledPlan pool(const QString &dataId, const std::vector<const StudyRow *> &rows) const {
    const RunResult &best = *rows.front()->result;
    PooledPlan plan{dataId,
                    rows.size(),
                    best.figure(QStringLiteral("cost_total")),
                    best.figure(QStringLiteral("unmet_rolls")),
                    false,
                    {}};
    const QString target = QLatin1String("pooled-") + dataId;
    QStringList words{programs_.plan,
                      QStringLiteral("--import-file"),
                      importFileOf(*rows.front()),
                      QStringLiteral("-o"),
                      target,
                      QStringLiteral("--quiet")};
    words += study_.planOptions;
    for (std::size_t i = 1; i < rows.size(); ++i) {
      words << QStringLiteral("--pool") << importFileOf(*rows[i]);
    }
    plan.isDone = runHere(words, target + QLatin1String(".out"));
    plan.figures =
        plan.isDone ? readPlanTotals(folder_.path + QLatin1Char('/') + target) : plan.figures;
    return plan;
  }

  // From the study's folder.
  static QString importFileOf(const StudyRow &row) {
    return QStringLiteral("runs/%1/data/CV.imp").arg(row.run.id);
  }

  // Started in the study's folder, so that thousands of names make no long command line.
  bool runHere(const QStringList &words, const QString &log) const {
    ChildRequest request = loggedRequest(words, folder_.path + QLatin1Char('/') + log);
    request.folder = folder_.path.toStdString();
    request.withoutVariable = "ZEM_CVN_PARAM";
    return runChild(request).isGood();
  }

  bool writeTables() const {
    return writeFile(folder_.path + QLatin1String("/study.csv"),
                     [this](std::ostream &file) { writeStudyCsv(study_, rows_, file); }) &&
           writeFile(folder_.path + QLatin1String("/study.json"),
                     [this](std::ostream &file) { writeStudyJson(study_, rows_, pooled_, file); });
  }

  // A page of all runs, and of each data the best run beside the worst.
  void makePages() const {
    for (const auto &[dataId, rows] : runsOfSameData()) {
      if (rows.size() > 1) {
        const QString page = QLatin1String("compare-") + dataId;
        runHere({programs_.report, QLatin1String("runs/") + rows.front()->run.id,
                 QStringLiteral("--with"), QLatin1String("runs/") + rows.back()->run.id,
                 QStringLiteral("-o"), page + QLatin1String(".html")},
                page + QLatin1String(".out"));
      }
    }
    runHere({programs_.report, QStringLiteral("study.json")}, QStringLiteral("study.out"));
  }

  void reportRun(const char *what, const StudyRow &row) const {
    out_ << what << runName(study_, row.run) << ": cost "
         << row.result->figure(QStringLiteral("cost_total")) << ", unmet "
         << row.result->figure(QStringLiteral("unmet_rolls")) << " rolls" << std::endl;
  }

  void reportPooled(const PooledPlan &plan) const {
    if (!plan.isDone) {
      out_ << "Pooled: no plan; see pooled-" << utf8(plan.dataId) << ".out" << std::endl;
      return;
    }
    const auto cost = plan.figures.find(QStringLiteral("cost_total"));
    const double pooled = cost == plan.figures.end() ? 0 : cost->second;
    out_ << "Pooled patterns of " << plan.runs << " runs: cost " << pooled << ", "
         << (plan.bestCost > 0 ? 100 * (plan.bestCost - pooled) / plan.bestCost : 0)
         << " % less than the best of them" << std::endl;
  }

  // Says what came out; true when every run is done.
  bool report() const {
    const auto flags = out_.flags();
    out_.setf(std::ios::fixed, std::ios::floatfield);
    out_.precision(2);
    const auto groups = runsOfSameData();
    for (const auto &[dataId, rows] : groups) {
      reportRun("Best:  ", *rows.front());
      reportRun("Worst: ", *rows.back());
    }
    for (const PooledPlan &plan : pooled_) {
      reportPooled(plan);
    }
    out_.flags(flags);
    out_ << "Table: " << utf8(folder_.path) << "/study.csv" << std::endl;
    out_ << "Page:  " << utf8(folder_.path) << "/study.html" << std::endl;
    return reportFailures();
  }

  bool reportFailures() const {
    std::size_t failures = 0;
    for (const StudyRow &row : rows_) {
      if (!row.isDone() && ++failures <= kShownFailures) {
        err_ << (row.result ? "failed: " : "missing: ") << runName(study_, row.run)
             << (row.result ? ": " + utf8(row.result->message) : "") << std::endl;
      }
    }
    if (failures > kShownFailures) {
      err_ << "and " << failures - kShownFailures << " more" << std::endl;
    }
    return failures == 0;
  }

  const Study &study_;
  const SweepOptions &options_;
  const Programs &programs_;
  std::ostream &out_;
  std::ostream &err_;
  StudyFolder folder_;
  std::vector<RunSettings> runs_;
  std::vector<StudyRow> rows_;
  std::vector<PooledPlan> pooled_;
};

}  // namespace

bool sweep(const Study &study, const SweepOptions &options, const Programs &programs,
           std::ostream &out, std::ostream &err) {
  return Sweep(study, options, programs, out, err).run();
}

}  // namespace corvane::sweep
