#pragma once

#include <QtGlobal>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/numbers.h"

namespace corvane {

// The import file: a script of one command a line for the network-planning tool,
//
//   line       = keyword { " <" attribute "> " value }
//   value      = name | number | "True" | "False" | "+infinity" | word
//   name       = '"' text '"'
//
//   addnode <type> "Process" <name> "Fine_W1_120" <x> 180 <y> 210 <period> "1"
//
// Numbers are written in general notation with six significant digits. Write faults are not looked
// at: after the first one the stream takes nothing more, so that a cut file has no last line.
class ImportFile {
 public:
  explicit ImportFile(std::ostream &out) : out_(out) {}

  // Writes the parts as one line, in one piece, and flushes it. Parts are texts (UTF-8), integers
  // and doubles.
  template <typename... Parts>
  void line(const Parts &...parts) {
    line_.clear();
    (append(parts), ...);
    line_ += '\n';
    out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
    out_.flush();
  }

 private:
  void append(std::string_view text) { line_ += text; }
  void append(double value) { appendGeneral(line_, value); }
  template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
  void append(Integer value) {
    appendInteger(line_, static_cast<qint64>(value));
  }

  std::ostream &out_;
  std::string line_;
};

}  // namespace corvane
