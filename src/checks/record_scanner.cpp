#include "checks/record_scanner.h"

#include <algorithm>
#include <cstring>
#include <deque>

#include "checks/line_faults.h"
#include "checks/memory_stream.h"
#include "core/line_reader.h"

namespace corvane::checks {

namespace {

// Beyond so many the file is something else, and names in it are missed nowhere.
constexpr quint32 kBrokenLinesWithNames = 10000;

class Scanner {
 public:
  Scanner(const SourceFile &file, Layout layout, TextTable &texts, FindingSink &sink)
      : faults_(file, layout, sink), file_(file), layout_(layout), sink_(sink) {
    for (const Column &column : layout) {
      columns_.emplace_back(column.kind, texts);
    }
  }

  ScanResult scan(const std::function<void(const Record &)> &visit) {
    result_.isUsable = !reportWholeFile(file_, sink_);
    if (result_.isUsable) {
      reportEnds(file_, sink_);
      result_.isUsable = !faults_.reportSeparator();
    }
    MemoryStream stream(file_.bytes());
    LineReader reader(stream);
    for (auto status = reader.next(); status != LineReader::Status::kEnd; status = reader.next()) {
      readLine(reader, status);
      ++result_.lines;
      visit(record_);
    }
    // What the end of the file throws away is not missed elsewhere.
    if (result_.isUsable && !file_.endsWithBreak()) {
      noteBroken(splitLine(reader.text()));
    }
    return std::move(result_);
  }

 private:
  void readLine(LineReader &reader, LineReader::Status status) {
    record_ = Record();
    record_.line = static_cast<quint32>(reader.number());
    record_.isTooLong = status == LineReader::Status::kTooLong;
    record_.isEmpty = *reader.text() == '\0';
    const std::string_view raw = file_.line(record_.line);
    const std::size_t length = std::strlen(reader.text());
    const char *begin = reader.text();
    record_.fields = splitLine(reader.text());
    lookAtFields();
    if (!result_.isUsable) {
      record_.isBroken = true;
      return;
    }
    const std::size_t mark = file_.markLength(record_.line);
    faults_.look(record_, raw, {begin - mark, length + mark});
    if (record_.isBroken) {
      noteBroken(record_.fields);
    }
  }

  void lookAtFields() {
    const int count = std::min(record_.fields.count, static_cast<int>(layout_.size()));
    for (int column = 0; column < count; ++column) {
      const auto at = static_cast<std::size_t>(column);
      record_.facts[at] = columns_[at].of(record_.fields[column]);
    }
  }

  void noteBroken(const LineFields &fields) {
    if (++result_.broken > kBrokenLinesWithNames) {
      return;
    }
    for (int i = 0; i < std::min(fields.count, LineFields::kMost); ++i) {
      result_.namesInBrokenLines.insert(cleanedName(fields[i]));
    }
  }

  LineFaults faults_;
  const SourceFile &file_;
  Layout layout_;
  FindingSink &sink_;
  std::deque<FieldTexts> columns_;
  Record record_;
  ScanResult result_;
};

}  // namespace

ScanResult scanRecords(const SourceFile &file, Layout layout, TextTable &texts, FindingSink &sink,
                       const std::function<void(const Record &)> &visit) {
  return Scanner(file, layout, texts, sink).scan(visit);
}

std::string_view fieldAt(const SourceFile &file, quint32 line, int column) {
  const std::string_view raw = file.line(line);
  std::string text(raw);
  const LineFields fields = splitLine(text.data() + file.markLength(line));
  if (column >= std::min(fields.count, LineFields::kMost)) {
    return raw.substr(raw.size());
  }
  return raw.substr(static_cast<std::size_t>(fields[column].data() - text.data()),
                    fields[column].size());
}

void placeAt(Finding &finding, const SourceFile &file, quint32 line, int column) {
  const std::string_view field = fieldAt(file, line, column);
  finding.line = line;
  finding.offset = static_cast<std::size_t>(field.data() - file.line(line).data());
  finding.length = field.size();
}

}  // namespace corvane::checks
