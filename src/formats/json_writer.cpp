#include "formats/json_writer.h"

#include <cmath>
#include <ostream>

#include "formats/number_text.h"

namespace corvane {

namespace {

// Writes the character as JSON wants it inside quotes.
void writeEscaped(std::ostream &out, char character) {
  constexpr std::string_view kHex = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(character);
  if (character == '"' || character == '\\') {
    out << '\\' << character;
  } else if (code < 0x20) {
    out << "\\u00" << kHex[code >> 4] << kHex[code & 0xf];
  } else {
    out << character;
  }
}

}  // namespace

void JsonWriter::key(std::string_view name) {
  separate();
  writeText(name);
  out_ << ": ";
  afterKey_ = true;
}

void JsonWriter::value(std::string_view text) {
  separate();
  writeText(text);
}

void JsonWriter::value(const QString &text) {
  const QByteArray bytes = text.toUtf8();
  value(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void JsonWriter::value(double number) {
  separate();
  if (std::isfinite(number)) {
    out_ << NumberText(number).view();
  } else {
    out_ << "null";
  }
}

void JsonWriter::value(qint64 number) {
  separate();
  out_ << number;
}

void JsonWriter::value(bool flag) {
  separate();
  out_ << (flag ? "true" : "false");
}

void JsonWriter::null() {
  separate();
  out_ << "null";
}

void JsonWriter::open(char bracket, Layout layout) {
  separate();
  out_ << bracket;
  const bool inOneLine = !levels_.empty() && levels_.back().onOneLine;
  levels_.push_back({inOneLine || layout == kOneLine, true});
}

void JsonWriter::close(char bracket) {
  const Level closed = levels_.back();
  levels_.pop_back();
  if (!closed.isEmpty && !closed.onOneLine) {
    breakLine();
  }
  out_ << bracket;
  if (levels_.empty()) {
    out_ << '\n';
  }
}

void JsonWriter::separate() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (levels_.empty()) {
    return;
  }
  Level &level = levels_.back();
  if (!level.isEmpty) {
    out_ << (level.onOneLine ? ", " : ",");
  }
  if (!level.onOneLine) {
    breakLine();
  }
  level.isEmpty = false;
}

void JsonWriter::breakLine() {
  out_ << '\n';
  for (std::size_t level = 0; level < levels_.size(); ++level) {
    out_ << "  ";
  }
}

void JsonWriter::writeText(std::string_view text) {
  out_ << '"';
  for (const char character : text) {
    writeEscaped(out_, character);
  }
  out_ << '"';
}

}  // namespace corvane
