#include "checks/line_faults.h"

#include <algorithm>

#include "checks/joined_numbers.h"
#include "checks/number_form.h"
#include "checks/separated_line.h"
#include "checks/shown_text.h"
#include "core/line_reader.h"

namespace corvane::checks {

namespace {

bool isAllDelimiters(std::string_view text) {
  return text.find_first_not_of(", \t;") == std::string_view::npos;
}

bool isHeaderWord(std::string_view field) {
  return field.find_first_of("0123456789") == std::string_view::npos &&
         std::any_of(field.begin(), field.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & '\x80') != 0;
         });
}

}  // namespace

void LineFaults::look(Record &record, std::string_view raw, std::string_view text) {
  text_ = text;
  if (reportStructure(record, raw)) {
    record.isBroken = true;
    return;
  }
  reportFields(record);
}

bool LineFaults::reportStructure(const Record &record, std::string_view raw) {
  if (record.isTooLong) {
    sink_.add(file_, Code::kLongLine, [&](Finding &finding) {
      finding.line = record.line;
      finding.offset = LineReader::kMaxLength;
      finding.detail = std::to_string(raw.size()) + " bytes; the line is skipped";
    });
    return true;
  }
  if (text_.size() < raw.size()) {
    sink_.add(file_, Code::kZeroBytes, [&](Finding &finding) {
      finding.line = record.line;
      finding.offset = text_.size();
      finding.length = 1;
      finding.detail = "the line is read as " + quotedText(raw.substr(0, text_.size()));
    });
    return true;
  }
  if (reportEmpty(record, raw) || reportHeader(record)) {
    return true;
  }
  // The usual line, by far.
  if (record.fields.count == expected() && !record.fields.hasCommaRun) {
    return false;
  }
  if (const char separator = separatorOf(raw); separator != '\0') {
    sink_.add(file_, Code::kSeparator, [&](Finding &finding) {
      describeSeparator(finding, record.line, separator);
      finding.detail += " in this line";
    });
    return true;
  }
  return reportCommas(record, raw) || reportTooMany(record, raw) || reportTooFew(record);
}

bool LineFaults::reportEmpty(const Record &record, std::string_view raw) {
  if (!isAllDelimiters(raw)) {
    return false;
  }
  const Severity severity = isMachineFile() ? Severity::kError : Severity::kWarning;
  sink_.add(file_, Code::kEmptyLine, severity, [&](Finding &finding) {
    finding.line = record.line;
    finding.length = raw.size();
    if (isMachineFile()) {
      finding.detail = "it is read as a cutter without a name, with a deckle of 0 inches";
    } else {
      finding.detail = layout_.size() == kOrderColumns.size() && layout_[0].name == "period"
                           ? "it is read as a bad order"
                           : "it is read as a rate without names";
    }
    dropLine(finding);
  });
  return true;
}

bool LineFaults::reportHeader(const Record &record) {
  if (hasSeenRecord_) {
    return false;
  }
  hasSeenRecord_ = true;
  int words = 0;
  for (int column = 0; column < expected(); ++column) {
    if (layout_[static_cast<std::size_t>(column)].kind == FieldKind::kName) {
      continue;
    }
    if (!record.has(column) || !isHeaderWord(record.fields[column])) {
      return false;
    }
    ++words;
  }
  if (words < 2) {
    return false;
  }
  sink_.add(file_, Code::kHeader, [&](Finding &finding) {
    finding.line = record.line;
    finding.length = text_.size();
    finding.detail = isMachineFile() ? "it is read as a cutter with a deckle of 0 inches"
                                     : "it is read as a record with zeros";
    dropLine(finding);
  });
  return true;
}

bool LineFaults::reportCommas(const Record &record, std::string_view raw) {
  const bool trailsOnly =
      record.fields.count == expected() && raw.back() == ',' && raw.front() != ',' &&
      raw.substr(0, raw.find_last_not_of(',') + 1).find(",,") == std::string_view::npos;
  if (!record.fields.hasCommaRun) {
    return false;
  }
  sink_.add(file_, Code::kCommas, [&](Finding &finding) {
    finding.line = record.line;
    const std::size_t run = raw.front() == ',' ? 0 : raw.find(",,");
    finding.offset = run == std::string_view::npos ? raw.size() - 1 : run;
    finding.length = raw.find_first_not_of(',', finding.offset) == std::string_view::npos
                         ? raw.size() - finding.offset
                         : raw.find_first_not_of(',', finding.offset) - finding.offset;
    if (trailsOnly) {
      finding.detail = "commas at the end are skipped";
      finding.fixKind = FixKind::kSafe;
      const std::size_t begin = file_.begin(record.line) + raw.find_last_not_of(',') + 1;
      finding.edits.push_back({begin, file_.begin(record.line) + raw.size(), ""});
    } else {
      finding.detail = std::to_string(record.fields.count) + " fields are read, and those behind " +
                       "it one place too early";
    }
  });
  return !trailsOnly;
}

bool LineFaults::reportTooMany(const Record &record, std::string_view raw) {
  if (record.fields.count <= expected()) {
    return false;
  }
  if (reportJoined(record, raw) || reportQuotedComma(record)) {
    return true;
  }
  sink_.add(file_, Code::kTooManyFields, [&](Finding &finding) {
    finding.line = record.line;
    const std::string_view last = record.fields[expected() - 1];
    finding.offset = offsetOf(last) + last.size() + 1;
    finding.length = raw.size() - finding.offset;
    finding.detail = quotedText(raw.substr(finding.offset)) + " is ignored";
    finding.write = std::string(raw.substr(0, finding.offset - 1));
    const std::size_t begin = file_.begin(record.line);
    finding.edits.push_back({begin + finding.offset - 1, begin + raw.size(), ""});
  });
  return false;
}

bool LineFaults::reportJoined(const Record &record, std::string_view raw) {
  const auto joined = joinNumbers(record.fields, layout_);
  if (!joined) {
    return false;
  }
  const JoinedNumbers::Join &first = joined->joins.front();
  sink_.add(
      file_, first.isThousands ? Code::kTextAfterNumber : Code::kDecimalComma,
      [&](Finding &finding) {
        place(finding, record, first.first, first.first + 1);
        const auto readAs = [&](int field) {
          const std::string value(record.fields[field]);
          return field < expected()
                     ? std::string(layout_[static_cast<std::size_t>(field)].name) + " " + value
                     : value + ", which is ignored";
        };
        finding.detail = quotedText(raw.substr(finding.offset, finding.length)) + " is read as " +
                         readAs(first.first) + " and " + readAs(first.first + 1);
        finding.fixKind = joined->isSole && !first.isThousands ? FixKind::kSafe : FixKind::kUnsafe;
        std::string line(raw);
        const std::size_t begin = file_.begin(record.line);
        for (auto join = joined->joins.rbegin(); join != joined->joins.rend(); ++join) {
          const std::size_t from = offsetOf(record.fields[join->first]);
          const std::string_view second = record.fields[join->first + 1];
          const std::size_t to = offsetOf(second) + second.size();
          line.replace(from, to - from, join->number);
          finding.edits.push_back({begin + from, begin + to, join->number});
        }
        finding.write = line;
      });
  return true;
}

bool LineFaults::reportQuotedComma(const Record &record) {
  const int count = std::min(record.fields.count, LineFields::kMost);
  for (int first = 0; first < count; ++first) {
    const std::string_view field = record.fields[first];
    if (field.front() != '"' || (field.size() > 1 && field.back() == '"')) {
      continue;
    }
    for (int last = first + 1; last < count; ++last) {
      if (record.fields[last].back() == '"') {
        sink_.add(file_, Code::kDoubleQuote, [&](Finding &finding) {
          place(finding, record, first, last);
          finding.detail = quotedText(text_.substr(finding.offset + 1, finding.length - 2)) +
                           " is read as " + std::to_string(last - first + 1) + " fields";
          finding.write = "the text without quotes and commas";
          finding.fixKind = FixKind::kNone;
        });
        return true;
      }
    }
  }
  return false;
}

bool LineFaults::reportTooFew(const Record &record) {
  if (record.fields.count >= expected()) {
    return false;
  }
  sink_.add(file_, Code::kTooFewFields, [&](Finding &finding) {
    finding.line = record.line;
    finding.offset = text_.size();
    finding.detail =
        std::to_string(record.fields.count) + " of " + std::to_string(expected()) + "; missing: ";
    for (int column = record.fields.count; column < expected(); ++column) {
      finding.detail += std::string(column > record.fields.count ? ", " : "") +
                        std::string(layout_[static_cast<std::size_t>(column)].name);
    }
  });
  return true;
}

void LineFaults::reportFields(Record &record) {
  for (int column = 0; column < expected(); ++column) {
    const auto at = static_cast<std::size_t>(column);
    const auto code = record.facts[at].code;
    if (!code) {
      continue;
    }
    // A decimal in a quantity loses something, but which order it is stays clear; orders report it,
    // since they know whether it was meant as a width.
    if (*code == Code::kQuantityDecimals) {
      record.badNumbers |= 1U << static_cast<unsigned>(column);
      continue;
    }
    const bool isName = layout_[at].kind == FieldKind::kName;
    if (isName) {
      record.isBroken = record.isBroken || *code != Code::kNotUtf8;
    } else {
      record.badNumbers |= 1U << static_cast<unsigned>(column);
    }
    if (*code == Code::kDoubleQuote) {
      reportQuotes(record, column);
      record.isBroken = true;
      return;
    }
    sink_.add(file_, *code, [&](Finding &finding) {
      place(finding, record, column, column);
      describeField(finding, record.fields[column], layout_[at].name, layout_[at].kind);
    });
  }
}

// One finding tells of all quotes of a line: a spreadsheet puts them around every field.
void LineFaults::reportQuotes(const Record &record, int column) {
  sink_.add(file_, Code::kDoubleQuote, [&](Finding &finding) {
    place(finding, record, column, column);
    const auto at = static_cast<std::size_t>(column);
    describeField(finding, record.fields[column], layout_[at].name, layout_[at].kind);
    for (int other = column + 1; other < expected(); ++other) {
      const Column &of = layout_[static_cast<std::size_t>(other)];
      if (record.fields[other].find('"') != std::string_view::npos) {
        Finding more = finding;
        more.edits.clear();
        place(more, record, other, other);
        describeField(more, record.fields[other], of.name, of.kind);
        finding.edits.insert(finding.edits.end(), more.edits.begin(), more.edits.end());
        finding.fixKind = std::max(finding.fixKind, more.fixKind);
      }
    }
    if (finding.edits.size() > 1) {
      finding.detail +=
          ", and so are " + std::to_string(finding.edits.size() - 1) + " more fields of the line";
    }
  });
}

void LineFaults::place(Finding &finding, const Record &record, int first, int last) const {
  finding.line = record.line;
  finding.offset = offsetOf(record.fields[first]);
  finding.length = offsetOf(record.fields[last]) + record.fields[last].size() - finding.offset;
}

char LineFaults::separatorOf(std::string_view line) const {
  return otherSeparator(line, expected());
}

bool LineFaults::reportSeparator() {
  constexpr quint32 kLook = 200;
  quint32 looked = 0;
  quint32 separated = 0;
  quint32 first = 0;
  for (quint32 line = 1; line <= file_.lineCount() && looked < kLook; ++line) {
    if (isAllDelimiters(file_.line(line))) {
      continue;
    }
    ++looked;
    if (separatorOf(file_.line(line)) != '\0') {
      first = first == 0 ? line : first;
      ++separated;
    }
  }
  if (first == 0 || 2 * separated <= looked) {
    return false;
  }
  sink_.add(file_, Code::kSeparator, [&](Finding &finding) {
    describeSeparator(finding, first, separatorOf(file_.line(first)));
    finding.detail += " in the whole file, so that every line is bad";
    finding.write = "corvane-convert can do it: " + finding.write;
    finding.edits = {{0, file_.bytes().size(), commaSeparated(file_.bytes(), layout_)}};
  });
  return true;
}

void LineFaults::describeSeparator(Finding &finding, quint32 line, char separator) const {
  const std::string_view text = file_.line(line);
  finding.line = line;
  finding.offset = text.find(separator);
  finding.length = 1;
  finding.detail = std::string(separator == '\t'  ? "tabs"
                               : separator == ';' ? "semicolons"
                                                  : "bars") +
                   " stand between fields";
  const std::size_t mark = file_.markLength(line);
  finding.write = commaSeparated(text.substr(mark), layout_);
  const std::size_t begin = file_.begin(line);
  finding.edits.push_back({begin + mark, begin + text.size(), finding.write});
}

}  // namespace corvane::checks
