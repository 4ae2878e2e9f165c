#pragma once

#include <QString>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace corvane {

// Writes one JSON document (RFC 8259) to a stream as it goes, so that a long one needs no memory.
//
// Objects and arrays opened with kLines give every member a line of its own, indented by two blanks
// a level; those opened with kOneLine, and everything inside them, stay on one line. Texts are
// UTF-8. Numbers have as many digits as reading them back needs; what is no finite number is null.
// The same calls give the same bytes.
//
// REQUIRES that members of objects alternate between key() and one value, and that what is opened
// is closed. Faults of the stream are the caller's to look for, at the end.
class JsonWriter {
 public:
  enum class Layout { kLines, kOneLine };
  using enum Layout;

  explicit JsonWriter(std::ostream &out) : out_(out) {}
  JsonWriter(const JsonWriter &) = delete;
  JsonWriter &operator=(const JsonWriter &) = delete;
  ~JsonWriter() = default;

  void beginObject(Layout layout = kLines) { open('{', layout); }
  void endObject() { close('}'); }
  void beginArray(Layout layout = kLines) { open('[', layout); }
  void endArray() { close(']'); }

  void key(std::string_view name);
  void value(std::string_view text);
  void value(const char *text) { value(std::string_view(text)); }
  void value(const QString &text);
  void value(double number);
  void value(qint64 number);
  void value(int number) { value(qint64{number}); }
  void value(bool flag);
  void null();

  template <typename T>
  void member(std::string_view name, const T &content) {
    key(name);
    value(content);
  }

 private:
  struct Level {
    bool onOneLine;
    bool isEmpty;
  };

  void open(char bracket, Layout layout);
  void close(char bracket);
  // What stands between the value before and the next one.
  void separate();
  void breakLine();
  void writeText(std::string_view text);

  std::ostream &out_;
  std::vector<Level> levels_;
  bool afterKey_ = false;
};

}  // namespace corvane
