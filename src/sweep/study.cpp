#include "sweep/study.h"

#include <QDir>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <ostream>

#include "app/run_parameters.h"

namespace corvane::sweep {

namespace {

// More than these in one range are a slip of the hand.
constexpr int kLongestRange = 100000;

using Objection = std::optional<QString>;

// "1..10" as its numbers; anything else as it is.
std::optional<QStringList> expand(const QString &value) {
  static const QRegularExpression kRange(QStringLiteral("^([0-9]+)\\s*\\.\\.\\s*([0-9]+)$"));
  const auto range = kRange.match(value);
  if (!range.hasMatch()) {
    // Half a range would be read as a number that it does not mean.
    return value.contains(QLatin1String("..")) ? std::nullopt : std::optional(QStringList{value});
  }
  const int first = range.captured(1).toInt();
  const int last = range.captured(2).toInt();
  if (last < first || last - first >= kLongestRange) {
    return std::nullopt;
  }
  QStringList values;
  for (int number = first; number <= last; ++number) {
    values << QString::number(number);
  }
  return values;
}

Objection splitValues(const QString &text, QStringList &values) {
  for (const QString &part : text.split(QLatin1Char(','))) {
    const auto expanded = expand(part.trimmed());
    if (!expanded || part.trimmed().isEmpty()) {
      return QStringLiteral("\"%1\" is no value").arg(part.trimmed());
    }
    values += *expanded;
  }
  if (values.removeDuplicates() > 0) {
    return QStringLiteral("a value stands there twice");
  }
  return std::nullopt;
}

// Percentages in one form, with their sign, so that equal ones look alike.
Objection takePercentages(QStringList &values) {
  for (QString &value : values) {
    QString number = value;
    number.remove(QLatin1Char('%'));
    bool valid = false;
    const double percent = number.trimmed().toDouble(&valid);
    if (!valid || !(percent >= -100)) {
      return QStringLiteral("\"%1\" is no change in percent").arg(value);
    }
    value = (percent < 0 ? QString() : QStringLiteral("+")) + QString::number(percent) +
            QLatin1Char('%');
  }
  return std::nullopt;
}

Objection takeFiles(const QDir &folder, QStringList &values) {
  for (QString &value : values) {
    if (value != kAsItIs && !folder.exists(value)) {
      return QStringLiteral("there is no file %1").arg(folder.filePath(value));
    }
    value = value == kAsItIs ? value : QDir::cleanPath(folder.absoluteFilePath(value));
  }
  return std::nullopt;
}

Objection takeParameter(const QString &key, const QStringList &values) {
  static const QStringList kOwn = {QStringLiteral("output"), QStringLiteral("log file")};
  if (kOwn.contains(key)) {
    return QStringLiteral("every run has its own");
  }
  RunParameters scratch;
  std::ostream silent(nullptr);
  for (const QString &value : values) {
    if (!setParameter(scratch, key, value, silent)) {
      return QStringLiteral("there is no such parameter");
    }
  }
  return std::nullopt;
}

class StudyReader {
 public:
  explicit StudyReader(const QString &folder) : folder_(folder) {
    reading_.study.mill = folder_.absolutePath();
  }

  StudyReading read(const QString &text) {
    int number = 0;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
      ++number;
      if (const Objection objection = readLine(line.trimmed())) {
        reading_.faults << QStringLiteral("line %1: %2").arg(number).arg(*objection);
      }
    }
    return std::move(reading_);
  }

 private:
  Objection readLine(const QString &line) {
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
      return std::nullopt;
    }
    const qsizetype at = line.indexOf(QLatin1Char('='));
    if (at < 0) {
      return QStringLiteral("no \"=\" in \"%1\"").arg(line);
    }
    const QString key = line.left(at).trimmed();
    const Objection objection = take(key, line.mid(at + 1).trimmed());
    return objection ? key + QLatin1String(": ") + *objection : objection;
  }

  Objection take(const QString &key, const QString &value) {
    if (key == QLatin1String("mill")) {
      return takeMill(value);
    }
    if (key == QLatin1String("plan options")) {
      reading_.study.planOptions = value.split(QLatin1Char(' '), Qt::SkipEmptyParts);
      return std::nullopt;
    }
    return takeVariation(key == QLatin1String("seed") ? QStringLiteral("rand num gen seed") : key,
                         value);
  }

  Objection takeMill(const QString &value) {
    if (!folder_.exists(value)) {
      return QStringLiteral("there is no folder %1").arg(folder_.filePath(value));
    }
    reading_.study.mill = QDir::cleanPath(folder_.absoluteFilePath(value));
    return std::nullopt;
  }

  Objection takeVariation(const QString &key, const QString &text) {
    std::vector<Variation> &all = reading_.study.variations;
    if (std::any_of(all.begin(), all.end(), [&](const Variation &v) { return v.key == key; })) {
      return QStringLiteral("this key stands there twice");
    }
    QStringList values;
    Objection objection = splitValues(text, values);
    if (!objection) {
      objection = key == kFreightKey ? takePercentages(values)
                  : isFileKey(key)   ? takeFiles(folder_, values)
                                     : takeParameter(key, values);
    }
    if (!objection) {
      all.push_back({key, values});
    }
    return objection;
  }

  QDir folder_;
  StudyReading reading_;
};

}  // namespace

bool isFileKey(const QString &key) {
  return key == QLatin1String("order file") || key == QLatin1String("machine file") ||
         key == QLatin1String("freight rate file");
}

StudyReading readStudy(const QString &text, const QString &folder) {
  return StudyReader(folder).read(text);
}

}  // namespace corvane::sweep
