#pragma once

#include <string>
#include <string_view>

namespace corvane::checks {

// Text of an input file as it is shown: UTF-8 on one line, without anything that moves a cursor.
// Control characters have the signs for them (U+2400 and on), blanks that cannot be told from
// blanks and characters without width show as signs too; what is not UTF-8 is shown as Latin-1.
std::string shown(std::string_view text);

// The same in double quotes, cut where it is very long.
std::string quotedText(std::string_view text);

bool isUtf8(std::string_view text);

// The characters of line[begin, end): of UTF-8 where the line is that, or else bytes.
std::size_t characterCount(std::string_view line, std::size_t begin, std::size_t end);

// A line, as it is shown, and a mark under some characters of it. Of a long line only what stands
// around the mark.
struct MarkedLine {
  std::string text;
  std::string mark;  // blanks, "^" and "~"
};
MarkedLine markedLine(std::string_view line, std::size_t begin, std::size_t length);

}  // namespace corvane::checks
