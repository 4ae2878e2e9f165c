#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <vector>

namespace corvane::report {

// What a study came to, as corvane-sweep writes it (schema corvane-study/1).

// Figures by name: "cost_total", "cost_freight", "trim_percent", "unmet_rolls", "patterns".
using StudyFigures = std::map<QString, double>;

struct StudyRun {
  QString id;
  QStringList settings;  // a value for each key that varies
  QString data;          // equal for runs that read the same data
  QString state;         // "done", "failed" or "missing"
  StudyFigures figures;  // of a run that is done
  double seconds = 0;
  QString message;

  bool isDone() const { return state == QLatin1String("done"); }
};

// The plan with the patterns of all runs of the same data.
struct StudyPool {
  QString data;
  int runs = 0;
  StudyFigures figures;
};

struct StudyRecord {
  QString name;  // of the study's folder
  QString mill;
  QStringList keys;            // what varies
  std::vector<StudyRun> runs;  // best first
  std::vector<StudyPool> pools;
};

// The figure, or 0.
double figureOf(const StudyFigures &figures, const QString &name);

// Nothing where the text is of another schema or no JSON.
std::optional<StudyRecord> studyFromJson(const QByteArray &json);

}  // namespace corvane::report
