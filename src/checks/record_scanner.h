#pragma once

#include <functional>
#include <unordered_set>

#include "checks/finding_sink.h"
#include "checks/line_fields.h"
#include "checks/record_layout.h"

namespace corvane::checks {

// A line of a data file as the program splits it, and what the checks of files, lines and fields
// have found of it.
struct Record {
  quint32 line = 0;
  // What the program makes of it: a whole line, one that is too long, or one that is empty.
  bool isTooLong = false;
  bool isEmpty = false;
  LineFields fields;
  std::array<FieldFacts, 7> facts;  // of the fields of the layout that the line has

  // Whether the line is not what was meant: its values are read as they are, and the other checks
  // say nothing of them.
  bool isBroken = false;
  unsigned badNumbers = 0;  // columns of which a finding tells already, as bits

  bool has(int column) const { return fields.count > column; }
  bool isBadNumber(int column) const {
    return (badNumbers >> static_cast<unsigned>(column) & 1U) != 0;
  }
};

// What a scan tells of its file.
struct ScanResult {
  quint32 lines = 0;     // with a line break
  quint32 comments = 0;  // of them comments and empty lines, where that is allowed
  quint32 broken = 0;    // lines that are not what was meant
  bool isUsable = true;  // false: the file as a whole is not what was meant
  // The names in broken lines, mended: what they would have been is not missed elsewhere.
  std::unordered_set<std::string> namesInBrokenLines;
};

// Reads the file by the program's line reader and splitter, reports what is wrong with the file,
// its lines and their fields, and visits every line that a line break ends.
ScanResult scanRecords(const SourceFile &file, Layout layout, TextTable &texts, FindingSink &sink,
                       const std::function<void(const Record &)> &visit);

// Reports what makes a file of lines of text none: one finding, and true.
bool reportWholeFile(const SourceFile &file, FindingSink &sink);

// Reports a byte order mark, and a last line without its break.
void reportEnds(const SourceFile &file, FindingSink &sink);

// The place of a column in a line of the file, for a finding; the end of the line where the line
// has no such column.
void placeAt(Finding &finding, const SourceFile &file, quint32 line, int column);

// The bytes of the column in the line of the file; empty where the line has no such column.
std::string_view fieldAt(const SourceFile &file, quint32 line, int column);

}  // namespace corvane::checks
