#include "report/study_record.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace corvane::report {

namespace {

QString textOf(const QJsonObject &object, const char *key) {
  return object.value(QLatin1String(key)).toString();
}

StudyFigures numbersOf(const QJsonObject &object) {
  StudyFigures figures;
  for (auto member = object.begin(); member != object.end(); ++member) {
    if (member->isDouble()) {
      figures[member.key()] = member->toDouble();
    }
  }
  return figures;
}

StudyRun runOf(const QJsonObject &object, const QStringList &keys) {
  StudyRun run;
  run.id = textOf(object, "run");
  const QJsonObject settings = object.value(QLatin1String("settings")).toObject();
  for (const QString &key : keys) {
    run.settings << settings.value(key).toString();
  }
  run.data = textOf(object, "data");
  run.state = textOf(object, "state");
  run.message = textOf(object, "message");
  run.figures = numbersOf(object);
  run.seconds = figureOf(run.figures, QStringLiteral("seconds"));
  return run;
}

}  // namespace

double figureOf(const StudyFigures &figures, const QString &name) {
  const auto found = figures.find(name);
  return found == figures.end() ? 0 : found->second;
}

std::optional<StudyRecord> studyFromJson(const QByteArray &json) {
  // The schema is the first member: a large record of a run need not be read to see that it is one.
  constexpr qsizetype kHead = 100;
  if (!json.first(std::min(kHead, json.size())).contains("corvane-study/")) {
    return std::nullopt;
  }
  const QJsonObject object = QJsonDocument::fromJson(json).object();
  if (textOf(object, "schema") != QLatin1String("corvane-study/1")) {
    return std::nullopt;
  }
  StudyRecord study;
  study.mill = textOf(object, "mill");
  study.keys = object.value(QLatin1String("varies")).toObject().keys();
  for (const QJsonValue &run : object.value(QLatin1String("runs")).toArray()) {
    study.runs.push_back(runOf(run.toObject(), study.keys));
  }
  for (const QJsonValue &value : object.value(QLatin1String("pooled")).toArray()) {
    const QJsonObject pool = value.toObject();
    if (textOf(pool, "state") == QLatin1String("done")) {
      study.pools.push_back(
          {textOf(pool, "data"), pool.value(QLatin1String("runs")).toInt(), numbersOf(pool)});
    }
  }
  return study;
}

}  // namespace corvane::report
