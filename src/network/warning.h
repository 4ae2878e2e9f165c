#pragma once

#include <QtGlobal>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::network {

// Something in a file that can be planned, but not as the reader of the plan may expect.
struct Warning {
  quint32 line = 0;  // counted from 1; 0 when it belongs to no line
  std::string kind;  // a short word for programs, such as "delay-differs"
  std::string text;  // a sentence without the line
};

// A name as the texts of warnings and faults show it.
inline std::string inQuotes(std::string_view name) {
  return '"' + std::string(name) + '"';
}

// What kind of fault keeps a file from being planned.
enum class Fault {
  kSense,  // commands that contradict each other, or numbers that mean nothing
  kCut,    // the end is missing
  kSeveralRuns,
  kGrammar,     // a line of no family
  kLineEnd,     // a carriage return before the line feed
  kUndeclared,  // a name
  kArcEnd,      // an arc to or from a node without its commodity
};

// The kind of warnings that mills differ in the transit time of a mode.
inline constexpr const char *kDelayDiffers = "delay-differs";

// A file that cannot be planned: the line (0 when it belongs to none) and why, as one sentence.
class Refused : public std::runtime_error {
 public:
  // The part of the line that is at fault, in bytes; without a length it is the line as a whole.
  struct Part {
    std::size_t offset = 0;
    std::size_t length = 0;
  };

  Refused(quint64 line, const std::string &text, Fault fault, Part part)
      : std::runtime_error(text), line_(line), fault_(fault), part_(part) {}
  Refused(quint64 line, const std::string &text, Fault fault = Fault::kSense)
      : Refused(line, text, fault, Part()) {}

  quint64 line() const { return line_; }
  Fault fault() const { return fault_; }
  Part part() const { return part_; }

 private:
  quint64 line_;
  Fault fault_;
  Part part_;
};

}  // namespace corvane::network
