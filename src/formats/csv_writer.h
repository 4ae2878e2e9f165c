#pragma once

#include <QString>
#include <iosfwd>
#include <string_view>

namespace corvane {

// Writes a table as RFC 4180 has it: fields between commas, lines ended by carriage return and line
// feed, and a field in quotes where it holds a comma, a quote or a line end. Texts are UTF-8,
// numbers have a decimal point and the fewest digits that read back to them; what is no finite
// number is an empty field. Faults of the stream are the caller's to look for, at the end.
class CsvWriter {
 public:
  explicit CsvWriter(std::ostream &out) : out_(out) {}
  CsvWriter(const CsvWriter &) = delete;
  CsvWriter &operator=(const CsvWriter &) = delete;
  ~CsvWriter() = default;

  CsvWriter &field(std::string_view text);
  CsvWriter &field(const char *text) { return field(std::string_view(text)); }
  CsvWriter &field(const QString &text);
  CsvWriter &field(double number);
  CsvWriter &field(qint64 number);
  CsvWriter &field(int number) { return field(qint64{number}); }
  void endRow();

  // A whole row of any of these.
  template <typename... Fields>
  void row(const Fields &...fields) {
    (field(fields), ...);
    endRow();
  }

 private:
  void separate();

  std::ostream &out_;
  bool inRow_ = false;
};

}  // namespace corvane
