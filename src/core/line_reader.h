#pragma once

#include <QtGlobal>
#include <array>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

// Reads a text file line by line through a fixed buffer. A line holds at most kMaxLength bytes; one
// carriage return right before its line break is dropped; a NUL byte ends its text. Only a line
// that ends with a line break counts.
class LineReader {
 public:
  static constexpr std::size_t kMaxLength = 1023;

  enum class Status {
    kLine,     // a whole line
    kTooLong,  // a line that is longer; it has been skipped, and the text is empty
    kEnd,      // the end of the file, or a read error; the text is the unterminated rest, if any
  };

  explicit LineReader(std::istream &in) : in_(in) {}

  Status next();

  // The line, ended by a NUL. It may be split in place, and is valid until next() is called.
  char *text() { return buffer_.data(); }
  // The number of the line, from 1.
  qint64 number() const { return number_; }

 private:
  Status skipRest();

  std::istream &in_;
  // Room for a carriage return behind the longest line, and for the NUL.
  std::array<char, kMaxLength + 2> buffer_{};
  qint64 number_ = 0;
};

// Splits a line in place in the manner of strtok: runs of the delimiter count as one, and leading
// ones are skipped, so a field is never empty. No quoting, no trimming.
class FieldSplitter {
 public:
  FieldSplitter(char *line, char delimiter) : rest_(line), delimiter_(delimiter) {}

  // The next field, which a NUL follows, or nothing when the line has no more.
  std::optional<std::string_view> next();

 private:
  char *rest_;
  char delimiter_;
};

// "Warning: Line {n} of {file name} is too long."
std::string tooLongWarning(qint64 lineNumber, const std::string &fileName);
