#include "formats/csv_writer.h"

#include <cmath>
#include <ostream>

#include "formats/number_text.h"

namespace corvane {

CsvWriter &CsvWriter::field(std::string_view text) {
  separate();
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out_ << text;
    return *this;
  }
  out_ << '"';
  for (const char character : text) {
    if (character == '"') {
      out_ << '"';
    }
    out_ << character;
  }
  out_ << '"';
  return *this;
}

CsvWriter &CsvWriter::field(const QString &text) {
  const QByteArray bytes = text.toUtf8();
  return field(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

CsvWriter &CsvWriter::field(double number) {
  separate();
  if (std::isfinite(number)) {
    out_ << NumberText(number).view();
  }
  return *this;
}

CsvWriter &CsvWriter::field(qint64 number) {
  separate();
  out_ << number;
  return *this;
}

void CsvWriter::endRow() {
  out_ << "\r\n";
  inRow_ = false;
}

void CsvWriter::separate() {
  if (inRow_) {
    out_ << ',';
  }
  inRow_ = true;
}

}  // namespace corvane
