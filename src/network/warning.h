#pragma once

#include <QtGlobal>
#include <stdexcept>
#include <string>

namespace corvane::network {

// Something in a file that can be planned, but not as the reader of the plan may expect.
struct Warning {
  quint32 line = 0;  // counted from 1; 0 when it belongs to no line
  std::string kind;  // a short word for programs, such as "delay-differs"
  std::string text;  // a sentence without the line
};

// A file that cannot be planned: the line (0 when it belongs to none) and why, as one sentence.
class Refused : public std::runtime_error {
 public:
  Refused(quint64 line, const std::string &text) : std::runtime_error(text), line_(line) {}
  quint64 line() const { return line_; }

 private:
  quint64 line_;
};

}  // namespace corvane::network
