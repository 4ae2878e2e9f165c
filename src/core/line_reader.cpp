#include "core/line_reader.h"

#include <limits>
#include <string>

LineReader::Status LineReader::next() {
  ++number_;
  buffer_[0] = '\0';
  in_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  const auto taken = static_cast<std::size_t>(in_.gcount());
  if (in_.bad() || taken == 0) {
    buffer_[0] = '\0';
    return Status::kEnd;
  }
  if (in_.eof()) {
    if (taken > kMaxLength) {
      buffer_[0] = '\0';
    }
    return Status::kEnd;
  }
  if (in_.fail()) {
    return skipRest();
  }
  std::size_t length = taken - 1;
  if (length > 0 && buffer_[length - 1] == '\r') {
    buffer_[--length] = '\0';
  }
  if (length > kMaxLength) {
    buffer_[0] = '\0';
    return Status::kTooLong;
  }
  return Status::kLine;
}

// The buffer filled up before the line break came.
LineReader::Status LineReader::skipRest() {
  buffer_[0] = '\0';
  in_.clear();
  in_.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  return in_.good() ? Status::kTooLong : Status::kEnd;
}

std::optional<std::string_view> FieldSplitter::next() {
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

std::string tooLongWarning(qint64 lineNumber, const std::string &fileName) {
  return "Warning: Line " + std::to_string(lineNumber) + " of " + fileName + " is too long.";
}
