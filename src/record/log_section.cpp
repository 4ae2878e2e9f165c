#include "record/log_section.h"

#include <QRegularExpression>

namespace corvane::record {

namespace {

constexpr const char *kStart = "**** Start Corvane. ";
constexpr const char *kEnd = "**** End Corvane. ";
constexpr const char *kBannerEnd = " ****";

// The time in a banner; empty for any other line.
QString bannerTime(const QString &line, const char *banner) {
  const QLatin1String start(banner);
  const QLatin1String end(kBannerEnd);
  return line.startsWith(start) && line.endsWith(end)
             ? line.mid(start.size(), line.size() - start.size() - end.size())
             : QString();
}

// A line "label    : value" of the summary or of the totals; all other lines are messages. Labels
// of the summary have 21 characters, those of the totals 33.
bool isSetting(const QString &line, QString &label, QString &value) {
  static const QRegularExpression kForm(
      QStringLiteral("^(Total [a-z ]{27}|[A-Z][A-Za-z ]{20}): ?(.*)$"));
  const QRegularExpressionMatch match = kForm.match(line);
  label = match.captured(1).trimmed();
  value = match.captured(2);
  return match.hasMatch();
}

void takeSetting(LogSection &section, const QString &label, const QString &value) {
  if (label == QLatin1String("Seed")) {
    section.seed = value.toLongLong();
  } else if (label == QLatin1String("Total demand in inches")) {
    section.demandInches = value.toDouble();
  } else if (label == QLatin1String("Total number of patterns in model")) {
    section.generatedPatterns = value.toLongLong();
  }
}

void takeLine(LogSection &section, const QString &line) {
  QString label;
  QString value;
  if (const QString time = bannerTime(line, kEnd); !time.isEmpty()) {
    section.ended = time;
    section.isComplete = true;
  } else if (isSetting(line, label, value)) {
    takeSetting(section, label, value);
  } else if (!line.isEmpty() && line != QLatin1String("Parameters:")) {
    section.messages << line;
  }
}

}  // namespace

LogSection lastSection(const QByteArray &log) {
  LogSection section;
  qsizetype start = log.lastIndexOf(kStart);
  while (start > 0 && log.at(start - 1) != '\n') {
    start = log.lastIndexOf(kStart, start - 1);  // a text within a line
  }
  if (start < 0) {
    return section;
  }
  const QStringList lines = QString::fromUtf8(log.mid(start)).split(QLatin1Char('\n'));
  section.started = bannerTime(lines.front(), kStart);
  for (const QString &line : lines.mid(1)) {
    if (section.isComplete) {
      break;
    }
    takeLine(section, line);
  }
  return section;
}

}  // namespace corvane::record
