#pragma once

#include <QtGlobal>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::checks {

// An input file in memory, with the places of its lines. Lines are numbered from 1; one ends with a
// line feed, in front of which one carriage return is dropped.
class SourceFile {
 public:
  // The name is the one that findings show.
  SourceFile(std::string name, std::string bytes);

  const std::string &name() const { return name_; }
  std::string_view bytes() const { return bytes_; }

  // Lines that end with a line break, and the rest behind them, if there is one.
  quint32 lineCount() const { return static_cast<quint32>(begins_.size()); }
  bool endsWithBreak() const { return bytes_.empty() || bytes_.back() == '\n'; }
  bool startsWithByteOrderMark() const { return bytes().starts_with(kByteOrderMark); }

  // The bytes of a byte order mark in front of the line: it belongs to the file, not to the first
  // line, which keeps it all the same.
  std::size_t markLength(quint32 line) const {
    return line == 1 && startsWithByteOrderMark() ? kByteOrderMark.size() : 0;
  }

  // A line without its line break; empty for 0 and for a line that is not there.
  std::string_view line(quint32 number) const;
  // Where a line begins, and where the one behind it does. REQUIRES a line of the file.
  std::size_t begin(quint32 number) const { return begins_[number - 1]; }
  std::size_t end(quint32 number) const;

 private:
  static constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

  std::string name_;
  std::string bytes_;
  std::vector<std::size_t> begins_;
};

// Reads a file by the rules of the program for paths. False where the program could not open it.
bool readBytes(const std::string &path, std::string &bytes);

}  // namespace corvane::checks
