#include "sweep/run_folder.h"

#include <QDir>
#include <QFile>

#include "core/numbers.h"
#include "formats/number_text.h"
#include "sweep/whole_file.h"

namespace corvane::sweep {

namespace {

// The fields of a rate's line that come before the rate.
constexpr qsizetype kFieldsBeforeRate = 3;

QByteArray contentOf(const QString &name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString fault(const QString &name) {
  return QStringLiteral("%1 cannot be written").arg(name);
}

QByteArray parametersOf(const Study &study, const RunSettings &run, const Mill &mill) {
  QByteArray text = contentOf(mill.parameterFile);
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
      "machine file=data/machines.data\norder file=data/orders.data\n"
      "freight rate file=data/freightRates.data\noutput=data/CV.imp\nlog file=data/corvane.log\n";
  return text;
}

// The run's freight rates: the file itself, or a changed copy of it, made when it is not there yet.
QString freightRatesOf(const StudyFolder &folder, const Study &study, const RunSettings &run,
                       const Mill &mill) {
  const QString file = fileOf(study, run, QStringLiteral("freight rate file"), mill);
  QString percent = valueOf(study, run, kFreightKey);
  if (percent.isEmpty() || percent == QLatin1String("+0%")) {
    return file;
  }
  const QString changed =
      QStringLiteral("%1/inputs/freightRates-%2.data").arg(folder.path, run.dataId);
  if (!QFile::exists(changed)) {
    percent.chop(1);
    QDir().mkpath(folder.path + QLatin1String("/inputs"));
    writeWhole(changed, changeRates(contentOf(file), percent.toDouble()));
  }
  return changed;
}

bool link(const QString &file, const QString &name) {
  return QFile::link(file, name);
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

}  // namespace

QByteArray changeRates(const QByteArray &rates, double percent) {
  QByteArrayList lines = rates.split('\n');
  for (QByteArray &line : lines) {
    line = changeRate(line, 1 + percent / 100);
  }
  return lines.join('\n');
}

QString makeRunFolder(const StudyFolder &folder, const Study &study, const RunSettings &run,
                      const Mill &mill) {
  const QString target = folder.run(run);
  const QString parameters = target + QLatin1String("/data/Parameters.data");
  // Written last, so that a folder that has it is whole.
  if (QFile::exists(parameters)) {
    return {};
  }
  QDir(target).removeRecursively();
  const QString data = target + QLatin1String("/data/");
  if (!QDir().mkpath(data)) {
    return fault(data);
  }
  const bool linked =
      link(fileOf(study, run, QStringLiteral("order file"), mill), data + "orders.data") &&
      link(fileOf(study, run, QStringLiteral("machine file"), mill), data + "machines.data") &&
      link(freightRatesOf(folder, study, run, mill), data + "freightRates.data");
  return linked && writeWhole(parameters, parametersOf(study, run, mill)) ? QString()
                                                                          : fault(target);
}

}  // namespace corvane::sweep
