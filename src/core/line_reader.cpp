#include "core/line_reader.h"

#include <cstring>
#include <string>

namespace corvane {

LineReader::Status LineReader::next() {
  ++number_;
  bool tooLong = false;
  char *lineBreak = findLineBreak();
  while (lineBreak == nullptr) {
    // Too long even if a carriage return comes next: what is read of the line can go.
    if (unread() > kMaxLength + 1) {
      tooLong = true;
      begin_ = end_;
    }
    if (!readMore()) {
      return takeRest(tooLong);
    }
    lineBreak = findLineBreak();
  }
  return takeLine(lineBreak, tooLong);
}

char *LineReader::findLineBreak() {
  return static_cast<char *>(std::memchr(begin_, '\n', unread()));
}

bool LineReader::readMore() {
  const std::size_t kept = unread();
  std::memmove(block_.data(), begin_, kept);
  begin_ = block_.data();
  end_ = begin_ + kept;
  // Looking ahead lets the stream fill its buffer, and taking what that holds cannot fail: so an
  // error costs no line that comes before it.
  if (in_.peek() == std::istream::traits_type::eof()) {
    return false;
  }
  const auto count = in_.readsome(end_, static_cast<std::streamsize>(kBlockSize - kept));
  end_ += count;
  return count > 0;
}

LineReader::Status LineReader::takeLine(char *lineBreak, bool tooLong) {
  text_ = begin_;
  begin_ = lineBreak + 1;
  char *end = lineBreak;
  if (end > text_ && end[-1] == '\r') {
    --end;
  }
  tooLong = tooLong || static_cast<std::size_t>(end - text_) > kMaxLength;
  *(tooLong ? text_ : end) = '\0';
  return tooLong ? Status::kTooLong : Status::kLine;
}

LineReader::Status LineReader::takeRest(bool tooLong) {
  const bool hasText = !tooLong && !in_.bad() && unread() <= kMaxLength;
  text_ = begin_;
  *(hasText ? end_ : text_) = '\0';
  begin_ = end_;
  return Status::kEnd;
}

std::string tooLongWarning(qint64 lineNumber, const std::string &fileName) {
  return "Warning: Line " + std::to_string(lineNumber) + " of " + fileName + " is too long.";
}

}  // namespace corvane
