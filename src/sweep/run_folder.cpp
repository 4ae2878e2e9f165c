#include "sweep/run_folder.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <future>
#include <map>
#include <set>
#include <thread>

#include "core/numbers.h"
#include "formats/number_text.h"
#include "sweep/whole_file.h"

namespace corvane::sweep {

namespace {

// The fields of a rate's line that come before the rate.
constexpr qsizetype kFieldsBeforeRate = 3;

// Names below the folder of a run's inputs.
const QLatin1String kOrders("/orders.data");
const QLatin1String kMachines("/machines.data");
const QLatin1String kRates("/freightRates.data");

QString unwritable(const QString &name) {
  return QStringLiteral("%1 cannot be written").arg(name);
}

QByteArray parametersOf(const Study &study, const RunSettings &run, const Mill &mill) {
  QByteArray text = readWhole(mill.parameterFile);
  if (!text.endsWith('\n')) {
    // What has no line break is not read, and must not be joined with what follows.
    text.truncate(text.lastIndexOf('\n') + 1);
  }
  text += "# of this run\n";
  for (std::size_t i = 0; i < study.variations.size(); ++i) {
    const QString &key = study.variations[i].key;
    if (key != kFreightKey && !isFileKey(key)) {
      text += (key + QLatin1Char('=') + run.values[static_cast<qsizetype>(i)]).toUtf8() + '\n';
    }
  }
  text +=
      "machine file=inputs/machines.data\norder file=inputs/orders.data\n"
      "freight rate file=inputs/freightRates.data\noutput=data/CV.imp\nlog file=data/corvane.log\n";
  return text;
}

// Makes the link, unless it is there and leads to the file.
bool link(const QString &file, const QString &name) {
  if (QFile::symLinkTarget(name) == file) {
    return true;
  }
  QFile::remove(name);
  return QFile::link(file, name);
}

bool hasChangedFreight(const Study &study, const RunSettings &run) {
  const QString percent = valueOf(study, run, kFreightKey);
  return !percent.isEmpty() && percent != QLatin1String("+0%");
}

double percentOf(const Study &study, const RunSettings &run) {
  return valueOf(study, run, kFreightKey).chopped(1).toDouble();
}

// The folder of inputs is named by the rates and the percentage too, so a copy stays right.
bool copyRates(const QString &file, double percent, const QString &name) {
  return QFile::exists(name) || writeWhole(name, changeRates(readWhole(file), percent));
}

QByteArray changeRate(const QByteArray &line, double factor) {
  QByteArrayList fields = line.split(',');
  fields.removeAll(QByteArray());
  if (fields.size() <= kFieldsBeforeRate) {
    return line;
  }
  QByteArray &rate = fields[kFieldsBeforeRate];
  const NumberText changed(leadingNumber(rate.constData()) * factor);
  rate = QByteArray(changed.view().data(), static_cast<qsizetype>(changed.view().size()));
  return fields.join(',');
}

QString makeInputs(const StudyFolder &folder, const Study &study, const RunSettings &run,
                   const Mill &mill) {
  const QString target = folder.inputs(run);
  if (!QDir().mkpath(target)) {
    return unwritable(target);
  }
  const QString rates = fileOf(study, run, QStringLiteral("freight rate file"), mill);
  const bool made =
      link(fileOf(study, run, QStringLiteral("order file"), mill), target + kOrders) &&
      link(fileOf(study, run, QStringLiteral("machine file"), mill), target + kMachines) &&
      (hasChangedFreight(study, run) ? copyRates(rates, percentOf(study, run), target + kRates)
                                     : link(rates, target + kRates));
  return made ? QString() : unwritable(target);
}

// Nothing where the folder is there already; different runs may be made at once.
QString makeRunFolder(const StudyFolder &folder, const Study &study, const RunSettings &run,
                      const Mill &mill) {
  const QString target = folder.run(run);
  const QString parameters = target + QLatin1String("/data/Parameters.data");
  // Written last, so that a folder that has it is whole.
  if (QFile::exists(parameters)) {
    return {};
  }
  QDir(target).removeRecursively();
  const bool made =
      QDir().mkpath(target + QLatin1String("/data")) &&
      QFile::link(QLatin1String("../../inputs/") + run.dataId, target + QLatin1String("/inputs")) &&
      writeWhole(parameters, parametersOf(study, run, mill));
  return made ? QString() : unwritable(target);
}

// All processors at once: it takes a tenth of the time that a small run does.
QString makeRunFolders(const StudyFolder &folder, const Study &study,
                       const std::map<QString, const RunSettings *> &runs, const Mill &mill) {
  const std::size_t parts = std::max(1U, std::thread::hardware_concurrency());
  const auto makePart = [&](std::size_t part) {
    QString fault;
    std::size_t number = 0;
    for (const auto &run : runs) {
      if (number++ % parts == part && fault.isEmpty()) {
        fault = makeRunFolder(folder, study, *run.second, mill);
      }
    }
    return fault;
  };
  std::vector<std::future<QString>> ends;
  for (std::size_t part = 0; part < parts; ++part) {
    ends.push_back(std::async(std::launch::async, makePart, part));
  }
  QStringList faults;
  for (std::future<QString> &end : ends) {
    faults << end.get();
  }
  faults.removeAll(QString());
  return faults.value(0);
}

}  // namespace

QByteArray changeRates(const QByteArray &rates, double percent) {
  QByteArrayList lines = rates.split('\n');
  for (QByteArray &line : lines) {
    line = changeRate(line, 1 + percent / 100);
  }
  return lines.join('\n');
}

QString makeFolders(const StudyFolder &folder, const Study &study,
                    const std::vector<RunSettings> &runs, const Mill &mill) {
  // Settings that come to the same are one run.
  std::map<QString, const RunSettings *> distinct;
  std::set<QString> data;
  for (const RunSettings &run : runs) {
    distinct.emplace(run.id, &run);
    if (data.insert(run.dataId).second) {
      QString fault = makeInputs(folder, study, run, mill);
      if (!fault.isEmpty()) {
        return fault;
      }
    }
  }
  return makeRunFolders(folder, study, distinct, mill);
}

}  // namespace corvane::sweep
