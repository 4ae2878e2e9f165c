#pragma once

#include <QtGlobal>
#include <array>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// Reads a text file line by line. A line holds at most kMaxLength bytes; one carriage return right
// before its line break is dropped; a NUL byte ends its text. Only a line that ends with a line
// break counts. A byte order mark at the very start (U+FEFF in UTF-8) is dropped; anywhere else it
// is text. A file that grows while it is read ends where it ended when the reader was made. Lines
// are found and handed out in a block of the file, and copied only from the end of one block to the
// next.
class LineReader {
 public:
  static constexpr std::size_t kMaxLength = 1023;

  enum class Status {
    kLine,     // a whole line
    kTooLong,  // a line that is longer; it has been skipped, and the text is empty
    kEnd,      // the end of the file; the text is the unterminated rest, if any. Or a read error:
               // then there is no text, and failed() tells
  };

  // REQUIRES a stream at its start with a buffer, as those of files and strings have one. It
  // outlives this. What cannot be positioned, a pipe for one, is read as long as it lasts.
  explicit LineReader(std::istream &in);
  LineReader(const LineReader &) = delete;
  LineReader &operator=(const LineReader &) = delete;
  ~LineReader() = default;

  Status next();

  // The line, ended by a NUL. It may be split in place, and is valid until next() is called.
  char *text() { return text_; }
  // The number of the line, from 1.
  qint64 number() const { return number_; }
  // Whether reading has met an error. What was read before it may be any part of the file.
  bool failed() const { return in_.bad(); }

 private:
  std::size_t unread() const { return static_cast<std::size_t>(end_ - begin_); }
  // The line break that ends the next line, or null when it has not been read yet.
  char *findLineBreak();
  // Reads more of the file behind what is unread; false at its end and when that fails.
  bool readMore();
  void dropByteOrderMark();
  // Hand out the line up to its break, or the rest of the file, of whose beginning nothing is left
  // when it was too long.
  Status takeLine(char *lineBreak, bool tooLong);
  Status takeRest(bool tooLong);

  // Much more than a line, and than a file stream reads at a time.
  static constexpr std::size_t kBlockSize = 16384;

  std::istream &in_;
  std::streamoff unreadOfFile_;
  // With room for a NUL.
  std::array<char, kBlockSize + 1> block_{};
  // What is unread of it.
  char *begin_ = block_.data();
  char *end_ = block_.data();
  char *text_ = block_.data();
  qint64 number_ = 0;
};

// Splits a line in place in the manner of strtok: runs of the delimiter count as one, and leading
// ones are skipped, so a field is never empty. No quoting, no trimming.
class FieldSplitter {
 public:
  FieldSplitter(char *line, char delimiter) : rest_(line), delimiter_(delimiter) {}

  // The next field, which a NUL follows, or nothing when the line has no more.
  // Inline, since the readers do little else for each field.
  std::optional<std::string_view> next() {
    while (*rest_ == delimiter_) {
      ++rest_;
    }
    if (*rest_ == '\0') {
      return std::nullopt;
    }
    const char *begin = rest_;
    // Fields are short: a plain loop is done before a library call has started.
    while (*rest_ != delimiter_ && *rest_ != '\0') {
      ++rest_;
    }
    const auto length = static_cast<std::size_t>(rest_ - begin);
    if (*rest_ != '\0') {
      *rest_++ = '\0';
    }
    return std::string_view(begin, length);
  }

 private:
  char *rest_;
  char delimiter_;
};

// Takes the line that the reader stands on, up to and including that of Status::kEnd.
using TakeLine = std::function<void(LineReader &line, LineReader::Status status)>;

// Opens the named file on the unopened stream, hands over its lines, and closes it. False when it
// cannot be opened or not be read to its end; lines before a read error have been handed over then.
bool readLines(std::ifstream &file, const std::string &name, const TakeLine &take);

// "Warning: Line {n} of {file name} is too long."
std::string tooLongWarning(qint64 lineNumber, const std::string &fileName);

}  // namespace corvane
