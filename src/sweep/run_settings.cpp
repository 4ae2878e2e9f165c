#include "sweep/run_settings.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QHash>
#include <ostream>

#include "app/parameter_file.h"
#include "core/text.h"

namespace corvane::sweep {

namespace {

constexpr qsizetype kIdLength = 12;

const QStringList kFileKeys = {QStringLiteral("order file"), QStringLiteral("machine file"),
                               QStringLiteral("freight rate file")};

// A name of the parameter file as a path: from the mill's folder, where the program is started, and
// with backslashes as separators where no file has the literal name.
QString resolve(const QString &folder, const QString &name) {
  const QString literal = QDir(folder).absoluteFilePath(name);
  return QFile::exists(literal) ? literal
                                : QDir(folder).absoluteFilePath(
                                      QString(name).replace(QLatin1Char('\\'), QLatin1Char('/')));
}

// The hashes of files, each read once.
class FileHashes {
 public:
  QByteArray of(const QString &name) {
    auto found = known_.find(name);
    if (found == known_.end()) {
      QCryptographicHash hash(QCryptographicHash::Sha256);
      QFile file(name);
      if (file.open(QIODevice::ReadOnly)) {
        hash.addData(&file);
      }
      found = known_.insert(name, hash.result());
    }
    return *found;
  }

 private:
  QHash<QString, QByteArray> known_;
};

QString shortHex(const QCryptographicHash &hash) {
  return QString::fromLatin1(hash.result().toHex()).left(kIdLength);
}

void identify(const Study &study, const Mill &mill, FileHashes &files, RunSettings &run) {
  QCryptographicHash data(QCryptographicHash::Sha256);
  for (const QString &key : kFileKeys) {
    data.addData(files.of(fileOf(study, run, key, mill)));
  }
  data.addData(valueOf(study, run, kFreightKey).toUtf8());
  run.dataId = shortHex(data);
  QCryptographicHash all(QCryptographicHash::Sha256);
  all.addData(data.result());
  all.addData(files.of(mill.parameterFile));
  all.addData(study.planOptions.join(QLatin1Char(' ')).toUtf8());
  for (std::size_t i = 0; i < study.variations.size(); ++i) {
    if (!isFileKey(study.variations[i].key)) {
      all.addData((QLatin1Char('\n') + study.variations[i].key + QLatin1Char('=') +
                   run.values[static_cast<qsizetype>(i)])
                      .toUtf8());
    }
  }
  run.id = shortHex(all);
}

}  // namespace

MillReading readMill(const QString &folder) {
  MillReading reading;
  Mill &mill = reading.mill;
  mill.parameterFile = resolve(folder, QStringLiteral("data/Parameters.data"));
  RunParameters parameters;
  std::ostream silent(nullptr);
  if (!readParameters(parameters, utf8(mill.parameterFile), silent)) {
    reading.fault = QStringLiteral("%1 cannot be read").arg(mill.parameterFile);
    return reading;
  }
  mill.orderFile = resolve(folder, parameters.orderFile);
  mill.machineFile = resolve(folder, parameters.machineFile);
  mill.freightRateFile = resolve(folder, parameters.freightRateFile);
  for (const QString &name : {mill.orderFile, mill.machineFile, mill.freightRateFile}) {
    if (!QFile::exists(name)) {
      reading.fault = QStringLiteral("%1 is not there").arg(name);
    }
  }
  return reading;
}

QString valueOf(const Study &study, const RunSettings &run, const QString &key) {
  for (std::size_t i = 0; i < study.variations.size(); ++i) {
    if (study.variations[i].key == key) {
      return run.values[static_cast<qsizetype>(i)];
    }
  }
  return {};
}

QString fileOf(const Study &study, const RunSettings &run, const QString &key, const Mill &mill) {
  const QString value = valueOf(study, run, key);
  if (!value.isEmpty() && value != kAsItIs) {
    return value;
  }
  return key == kFileKeys[0] ? mill.orderFile
                             : (key == kFileKeys[1] ? mill.machineFile : mill.freightRateFile);
}

std::vector<RunSettings> allRuns(const Study &study, const Mill &mill) {
  std::vector<RunSettings> runs(1);
  for (const Variation &variation : study.variations) {
    std::vector<RunSettings> longer;
    for (const RunSettings &run : runs) {
      for (const QString &value : variation.values) {
        longer.push_back(run);
        longer.back().values << value;
      }
    }
    runs = std::move(longer);
  }
  FileHashes files;
  for (RunSettings &run : runs) {
    identify(study, mill, files, run);
  }
  return runs;
}

}  // namespace corvane::sweep
