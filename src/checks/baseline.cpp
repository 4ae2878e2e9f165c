#include "checks/baseline.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "checks/source_file.h"

namespace corvane::checks {

std::optional<std::unordered_map<std::string, int>> readBaseline(const std::string &path,
                                                                 std::string &fault) {
  std::string bytes;
  if (!readBytes(path, bytes)) {
    fault = "could not open " + path;
    return std::nullopt;
  }
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(
      QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())), &error);
  if (!document.isObject() || !document[QStringLiteral("findings")].isArray()) {
    fault = path + " is no file of --format json";
    if (error.error != QJsonParseError::NoError) {
      fault += ": " + error.errorString().toStdString();
    }
    return std::nullopt;
  }
  std::unordered_map<std::string, int> known;
  for (const QJsonValue finding : document[QStringLiteral("findings")].toArray()) {
    ++known[finding[QStringLiteral("key")].toString().toStdString()];
  }
  return known;
}

}  // namespace corvane::checks
