#include "record/input_findings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <sstream>

#include "checks/check_run.h"

namespace corvane::record {

namespace {

Finding findingOf(const QJsonObject &object, const QString &folder) {
  QString file = object.value(QLatin1String("file")).toString();
  if (file.startsWith(folder)) {
    file.remove(0, folder.size());
  }
  return {object.value(QLatin1String("code")).toString(),
          object.value(QLatin1String("severity")).toString(), file,
          object.value(QLatin1String("line")).toInteger(),
          object.value(QLatin1String("message")).toString()};
}

qint64 leftOut(const QJsonObject &notShown) {
  qint64 sum = 0;
  for (const QJsonValue count : notShown) {
    sum += count.toInteger();
  }
  return sum;
}

}  // namespace

bool checkInputs(Record &record, const std::filesystem::path &folder) {
  checks::CheckOptions options;
  options.argument = folder.string();
  options.format = "json";
  options.maximumPerCode = std::to_string(kMostFindingsOfACode);
  std::ostringstream out;
  std::ostringstream err;
  if (checks::runCheck(options, out, err) == checks::kExitNotChecked) {
    return false;
  }
  const QJsonObject json = QJsonDocument::fromJson(QByteArray::fromStdString(out.str())).object();
  const QString prefix = QString::fromStdString((folder / "").string());
  for (const QJsonValue finding : json.value(QLatin1String("findings")).toArray()) {
    record.findings.push_back(findingOf(finding.toObject(), prefix));
  }
  record.findingsLeftOut = leftOut(json.value(QLatin1String("notShown")).toObject());
  record.wereInputsChecked = true;
  return true;
}

}  // namespace corvane::record
