#pragma once

#include <string_view>

#include "checks/record_scanner.h"

namespace corvane::checks {

// What is wrong with the lines of a data file: one finding for what breaks a line's structure, or
// else one for each field.
class LineFaults {
 public:
  LineFaults(const SourceFile &file, Layout layout, FindingSink &sink)
      : file_(file), layout_(layout), sink_(sink) {}

  // Reports a file whose fields are separated by something else than commas: true.
  bool reportSeparator();

  // Reports what is wrong with the line, and notes it in the record. Its fields point into text,
  // the line up to a NUL; raw is all of it.
  void look(Record &record, std::string_view raw, std::string_view text);

 private:
  bool reportStructure(const Record &record, std::string_view raw);
  bool reportEmpty(const Record &record, std::string_view raw);
  bool reportHeader(const Record &record);
  bool reportCommas(const Record &record, std::string_view raw);
  bool reportTooMany(const Record &record, std::string_view raw);
  bool reportJoined(const Record &record, std::string_view raw);
  bool reportQuotedComma(const Record &record);
  bool reportTooFew(const Record &record);
  void reportFields(Record &record);
  void reportQuotes(const Record &record, int column);

  bool isMachineFile() const { return layout_.size() == kMachineColumns.size(); }
  int expected() const { return static_cast<int>(layout_.size()); }
  // The separator of a line that has not enough commas, or 0.
  char separatorOf(std::string_view line) const;
  void describeSeparator(Finding &finding, quint32 line, char separator) const;
  std::size_t offsetOf(std::string_view field) const {
    return static_cast<std::size_t>(field.data() - text_.data());
  }
  // Makes the finding about fields first to last of the line.
  void place(Finding &finding, const Record &record, int first, int last) const;

  const SourceFile &file_;
  Layout layout_;
  FindingSink &sink_;
  std::string_view text_;
  bool hasSeenRecord_ = false;
};

}  // namespace corvane::checks
