#include "record/record_reader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "record/record_check.h"
#include "record/record_fields.h"

namespace corvane::record {

namespace {

// Whole numbers up to here are exact in JSON as Qt reads it.
constexpr double kLargestWhole = 9007199254740992.0;

// Remembers the first value of a wrong kind by the key that it stands under.
class FieldReader {
 public:
  template <typename T>
  void operator()(const char *key, T &field) {
    const QJsonValue value = object_.value(QLatin1String(key));
    if (value.isUndefined()) {
      return;
    }
    const char *outer = key_;
    key_ = key;
    read(value, field);
    key_ = outer;
  }

  template <typename... Elements>
  void row(Elements &...elements) {
    if (array_.size() < qsizetype{sizeof...(elements)}) {
      fail();
      return;
    }
    const QJsonArray array = array_;
    qsizetype at = 0;
    (read(array.at(at++), elements), ...);
  }

  template <typename T>
  void read(const QJsonValue &value, T &field) {
    if constexpr (requires { objectFields(*this, field); }) {
      require(value.isObject());
      const QJsonObject outer = std::exchange(object_, value.toObject());
      objectFields(*this, field);
      object_ = outer;
    } else {
      require(value.isArray());
      const QJsonArray outer = std::exchange(array_, value.toArray());
      rowFields(*this, field);
      array_ = outer;
    }
  }

  void read(const QJsonValue &value, QString &field) {
    require(value.isString());
    field = value.toString();
  }
  void read(const QJsonValue &value, bool &field) {
    require(value.isBool());
    field = value.toBool();
  }
  void read(const QJsonValue &value, double &field) {
    require(value.isDouble());
    field = value.toDouble();
  }
  void read(const QJsonValue &value, qint64 &field) {
    require(value.isDouble() && qAbs(value.toDouble()) <= kLargestWhole);
    field = value.toInteger();
  }
  void read(const QJsonValue &value, int &field) {
    require(value.isDouble() && value.toInt(-1) == value.toInt(0));
    field = value.toInt();
  }

  template <typename T>
  void read(const QJsonValue &value, std::optional<T> &field) {
    if (!value.isNull()) {
      read(value, field.emplace());
    }
  }

  template <typename T>
  void read(const QJsonValue &value, std::vector<T> &list) {
    require(value.isArray());
    const QJsonArray array = value.toArray();
    list.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue element : array) {
      read(element, list.emplace_back());
    }
  }

  void read(const QJsonValue &value, QStringList &list) {
    require(value.isArray());
    for (const QJsonValue element : value.toArray()) {
      read(element, list.emplace_back());
    }
  }

  QString fault() const { return fault_; }

 private:
  void require(bool condition) {
    if (!condition) {
      fail();
    }
  }
  void fail() {
    if (fault_.isEmpty()) {
      fault_ = QStringLiteral("\"%1\" is not of the kind that it should be").arg(key_);
    }
  }

  QJsonObject object_;
  QJsonArray array_;
  const char *key_ = "record";
  QString fault_;
};

}  // namespace

std::optional<Record> fromJson(const QByteArray &json, QString &fault) {
  QJsonParseError error{};
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (document.isNull()) {
    fault = error.errorString();
    return std::nullopt;
  }
  const QString schema = document.object().value(QLatin1String("schema")).toString();
  if (schema != QLatin1String(kSchema)) {
    fault = QStringLiteral("its schema is \"%1\", not \"%2\"").arg(schema, QLatin1String(kSchema));
    return std::nullopt;
  }
  FieldReader reader;
  Record record;
  reader.read(QJsonValue(document.object()), record);
  fault = reader.fault().isEmpty() ? faultOf(record) : reader.fault();
  return fault.isEmpty() ? std::optional(std::move(record)) : std::nullopt;
}

}  // namespace corvane::record
