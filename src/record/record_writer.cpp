#include "record/record_writer.h"

#include <sstream>

#include "formats/json_writer.h"
#include "record/record_fields.h"

namespace corvane::record {

namespace {

class FieldWriter {
 public:
  explicit FieldWriter(JsonWriter &json) : json_(json) {}

  template <typename T>
  void operator()(const char *key, const T &field) {
    json_.key(key);
    write(field);
  }

  template <typename... Elements>
  void row(const Elements &...elements) {
    (write(elements), ...);
  }

  template <typename T>
  void write(const T &value) {
    if constexpr (requires { objectFields(*this, value); }) {
      json_.beginObject(kIsWide<T> ? JsonWriter::Layout::kLines : JsonWriter::Layout::kOneLine);
      objectFields(*this, value);
      json_.endObject();
    } else if constexpr (requires { rowFields(*this, value); }) {
      json_.beginArray(JsonWriter::Layout::kOneLine);
      rowFields(*this, value);
      json_.endArray();
    } else {
      json_.value(value);
    }
  }

  template <typename T>
  void write(const std::vector<T> &list) {
    json_.beginArray(std::is_arithmetic_v<T> ? JsonWriter::Layout::kOneLine
                                             : JsonWriter::Layout::kLines);
    for (const T &element : list) {
      write(element);
    }
    json_.endArray();
  }

  void write(const QStringList &list) {
    json_.beginArray(JsonWriter::Layout::kOneLine);
    for (const QString &text : list) {
      json_.value(text);
    }
    json_.endArray();
  }

  template <typename T>
  void write(const std::optional<T> &value) {
    if (value.has_value()) {
      write(*value);
    } else {
      json_.null();
    }
  }

 private:
  // Objects whose members stand on lines of their own.
  template <typename T>
  static constexpr bool kIsWide =
      std::is_same_v<T, Plan> || std::is_same_v<T, Network> || std::is_same_v<T, LogSection>;

  JsonWriter &json_;
};

// Without the blanks outside of texts, which are a quarter of a large record, and with "<" escaped,
// which stands in texts alone.
QByteArray compact(const std::string &json) {
  QByteArray result;
  result.reserve(static_cast<qsizetype>(json.size()));
  bool isText = false;
  bool isEscaped = false;
  for (const char sign : json) {
    if (sign == '"' && !isEscaped) {
      isText = !isText;
    }
    isEscaped = sign == '\\' && !isEscaped;
    if (sign == '<') {
      result += "\\u003c";
    } else if (isText || sign != ' ') {
      result += sign;
    }
  }
  return result;
}

}  // namespace

QByteArray toJson(const Record &record) {
  std::ostringstream out;
  JsonWriter json(out);
  FieldWriter writer(json);
  json.beginObject();
  json.member("schema", kSchema);
  objectFields(writer, record);
  json.endObject();
  out << "\n";
  return compact(out.str());
}

}  // namespace corvane::record
