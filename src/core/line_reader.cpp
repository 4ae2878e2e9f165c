#include "core/line_reader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "core/files.h"

namespace corvane {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The bytes from here to the end of the stream, or more than there can be where it has no position.
std::streamoff bytesToRead(std::istream &in) {
  const std::streamoff begin = in.tellg();
  in.seekg(0, std::ios::end);
  const std::streamoff end = in.tellg();
  in.clear();
  if (begin < 0 || end < 0) {
    return std::numeric_limits<std::streamoff>::max();
  }
  in.seekg(begin);
  return end - begin;
}

}  // namespace

LineReader::LineReader(std::istream &in) : in_(in), unreadOfFile_(bytesToRead(in)) {}

LineReader::Status LineReader::next() {
  if (number_ == 0) {
    dropByteOrderMark();
  }
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
  if (unreadOfFile_ == 0 || in_.peek() == std::istream::traits_type::eof()) {
    return false;
  }
  const auto room = static_cast<std::streamoff>(kBlockSize - kept);
  const std::streamsize count = in_.readsome(end_, std::min(room, unreadOfFile_));
  end_ += count;
  unreadOfFile_ -= count;
  return count > 0;
}

// Reads no further than it takes to see that there is none.
void LineReader::dropByteOrderMark() {
  std::size_t matched = 0;
  while (matched < kByteOrderMark.size() && (matched < unread() || readMore()) &&
         begin_[matched] == kByteOrderMark[matched]) {
    ++matched;
  }
  if (matched == kByteOrderMark.size()) {
    begin_ += matched;
  }
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

bool readLines(std::ifstream &file, const std::string &name, const TakeLine &take) {
  if (!openForReading(file, name)) {
    return false;
  }
  LineReader reader(file);
  auto status = LineReader::Status::kLine;
  while (status != LineReader::Status::kEnd) {
    status = reader.next();
    if (!reader.failed()) {
      take(reader, status);
    }
  }
  file.close();
  return !reader.failed();
}

std::string tooLongWarning(qint64 lineNumber, const std::string &fileName) {
  return "Warning: Line " + std::to_string(lineNumber) + " of " + fileName + " is too long.";
}

}  // namespace corvane
