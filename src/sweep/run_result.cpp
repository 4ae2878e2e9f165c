#include "sweep/run_result.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <sstream>

#include "core/text.h"
#include "formats/json_writer.h"
#include "sweep/whole_file.h"

namespace corvane::sweep {

namespace {

QString fileOf(const QString &runFolder) {
  return runFolder + QLatin1String("/result.json");
}

QJsonObject readObject(const QString &name) {
  return QJsonDocument::fromJson(readWhole(name)).object();
}

// Adds the numbers of an object, and those of the objects in it.
// NOLINTNEXTLINE(misc-no-recursion): as deep as a record's objects nest
void flatten(const QJsonObject &object, const QString &prefix, std::map<QString, double> &figures) {
  for (auto member = object.begin(); member != object.end(); ++member) {
    const QString name = prefix + member.key();
    if (member->isDouble()) {
      figures[name] = member->toDouble();
    } else if (member->isObject()) {
      flatten(member->toObject(), name + QLatin1Char('_'), figures);
    }
  }
}

}  // namespace

double RunResult::figure(const QString &name) const {
  const auto found = figures.find(name);
  return found == figures.end() ? 0 : found->second;
}

std::optional<RunResult> readResult(const QString &runFolder) {
  const QJsonObject object = readObject(fileOf(runFolder));
  if (object.isEmpty()) {
    return std::nullopt;
  }
  RunResult result;
  result.plannerStatus = object[QLatin1String("corvane_status")].toInt(-1);
  result.planStatus = object[QLatin1String("plan_status")].toInt(-1);
  result.seconds = object[QLatin1String("seconds")].toDouble();
  result.message = object[QLatin1String("message")].toString();
  flatten(object[QLatin1String("figures")].toObject(), {}, result.figures);
  return result;
}

bool writeResult(const QString &runFolder, const RunResult &result) {
  std::ostringstream text;
  JsonWriter json(text);
  json.beginObject();
  json.member("corvane_status", result.plannerStatus);
  json.member("plan_status", result.planStatus);
  json.member("seconds", result.seconds);
  json.member("message", result.message);
  json.key("figures");
  json.beginObject();
  for (const auto &[name, value] : result.figures) {
    json.member(utf8(name), value);
  }
  json.endObject();
  json.endObject();
  return writeWhole(fileOf(runFolder), QByteArray::fromStdString(text.str()));
}

std::map<QString, double> readPlanTotals(const QString &planFolder) {
  std::map<QString, double> figures;
  const QJsonObject record = readObject(planFolder + QLatin1String("/plan.json"));
  flatten(record[QLatin1String("totals")].toObject(), {}, figures);
  return figures;
}

}  // namespace corvane::sweep
