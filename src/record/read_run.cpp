#include "record/read_run.h"

#include <QCryptographicHash>
#include <QFile>
#include <fstream>
#include <sstream>

#include "app/parameter_file.h"
#include "core/files.h"
#include "core/text.h"
#include "network/network_reader.h"
#include "plan/plan_problem.h"
#include "record/input_findings.h"
#include "record/log_section.h"
#include "record/name_index.h"
#include "record/network_record.h"
#include "record/node_places.h"
#include "record/order_demand.h"
#include "record/paper_bound.h"
#include "record/plan_reader.h"

namespace corvane::record {

namespace {

namespace fs = std::filesystem;

QString nameOf(const fs::path &path) {
  return QString::fromStdString(path.string());
}

std::optional<QByteArray> bytesOf(const fs::path &path) {
  QFile file(nameOf(path));
  // A folder opens, but does not read.
  if (!fs::is_regular_file(path) || !file.open(QIODevice::ReadOnly)) {
    return std::nullopt;
  }
  return file.readAll();
}

class RunReader {
 public:
  RunReader(const RunSource &source, QString &fault) : source_(source), fault_(fault) {}

  std::optional<Record> read(const QString &version) {
    record_.version = version;
    record_.name = nameOf(fs::weakly_canonical(source_.folder).filename());
    if (!readParameterFile()) {
      return std::nullopt;
    }
    addParameters();
    addFiles();
    if (const auto log = bytesOf(pathOf(parameters_.logFile))) {
      record_.log = lastSection(*log);
    }
    checkInputs(record_, source_.folder);
    if (!readImportFile() || !readPlanFile()) {
      return std::nullopt;
    }
    return std::move(record_);
  }

 private:
  fs::path pathOf(const QString &name) const { return pathOfFile(utf8(name), source_.folder); }

  bool readParameterFile() {
    parameterPath_ = pathOfFile(parameterFileName(), source_.folder);
    std::ostringstream messages;
    if (!readParameters(parameters_, parameterPath_.string(), messages)) {
      fault_ = QStringLiteral("The parameter file %1 cannot be read.").arg(nameOf(parameterPath_));
      return false;
    }
    record_.daysPerPeriod = parameters_.daysPerPeriod;
    return true;
  }

  // A key is of the file when setting it there is what gave the value.
  void addParameters() {
    const QString file = QString::fromUtf8(bytesOf(parameterPath_).value_or(QByteArray()));
    const QStringList lines = file.split(QLatin1Char('\n'));
    for (const ParameterRule &rule : parameterRules()) {
      const QString key = QLatin1String(rule.key);
      const bool isInFile = std::any_of(lines.begin(), lines.end(), [&](const QString &line) {
        return line.startsWith(key + QLatin1Char('='));
      });
      record_.parameters.push_back({key, text(parameterText(parameters_, key)),
                                    isInFile ? QStringLiteral("file") : QStringLiteral("default")});
    }
  }

  void addFiles() {
    addFile("parameters", QString::fromStdString(parameterFileName()));
    addFile("orders", parameters_.orderFile);
    addFile("machines", parameters_.machineFile);
    addFile("freight rates", parameters_.freightRateFile);
    addFile("import file", parameters_.output);
    addFile("log", parameters_.logFile);
  }

  void addFile(const char *role, const QString &name) {
    File file{QLatin1String(role), name, false, 0, {}};
    if (const auto bytes = bytesOf(pathOf(name))) {
      file.isThere = true;
      file.bytes = bytes->size();
      file.sha256 =
          QString::fromLatin1(QCryptographicHash::hash(*bytes, QCryptographicHash::Sha256).toHex());
    }
    record_.files.push_back(file);
  }

  bool readImportFile() {
    const fs::path path = pathOf(parameters_.output);
    try {
      const network::Network network = network::readNetworkFile(path.string());
      QStringList periods;
      for (const std::string &period : network.periods) {
        periods << QString::fromStdString(period);
      }
      std::ifstream file(path);
      const QHash<QByteArray, QPoint> places = nodePlaces(file);
      const InputFacts facts = readInputFacts(parameters_, source_.folder, periods);
      record_.seen = facts.seen;
      if (parameters_.patternsOnly == 1) {
        fillPatternsOnly(record_, network, places, facts);
      } else {
        fillNetwork(record_, network, plan::makeProblem(network, {}), places, facts);
      }
      return true;
    } catch (const network::Refused &refused) {
      fault_ =
          QStringLiteral("The import file %1 cannot be read%2: %3.")
              .arg(nameOf(path),
                   refused.line() > 0 ? QStringLiteral(", line %1").arg(refused.line()) : QString(),
                   QString::fromUtf8(refused.what()));
      return false;
    }
  }

  bool readPlanFile() {
    const bool isGiven = !source_.plan.empty();
    const fs::path path =
        isGiven ? source_.plan : pathOf(parameters_.output).parent_path() / "plan" / "plan.json";
    const auto bytes = bytesOf(path);
    if (!bytes && !isGiven) {
      return true;
    }
    QString why = QStringLiteral("there is no such file");
    if (!bytes || !readPlan(record_, *bytes, why)) {
      fault_ = QStringLiteral("The plan %1 cannot be taken: %2.").arg(nameOf(path), why);
      return false;
    }
    record_.plan->paperBounds = paperBounds(record_, parameters_.maximumWidthsInPattern);
    return true;
  }

  const RunSource &source_;
  QString &fault_;
  RunParameters parameters_;
  fs::path parameterPath_;
  Record record_;
};

}  // namespace

std::optional<Record> readRun(const RunSource &source, const QString &version, QString &fault) {
  return RunReader(source, fault).read(version);
}

fs::path importFileOf(const fs::path &folder) {
  RunParameters parameters;
  std::ostringstream messages;
  readParameters(parameters, pathOfFile(parameterFileName(), folder).string(), messages);
  return pathOfFile(utf8(parameters.output), folder);
}

}  // namespace corvane::record
