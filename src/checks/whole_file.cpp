// What makes a file no file of lines of text, and what its two ends may hold.

#include <QStringDecoder>
#include <algorithm>

#include "checks/record_scanner.h"
#include "checks/shown_text.h"
#include "core/text.h"

namespace corvane::checks {

namespace {

// Replaces the whole file.
void replaceFile(Finding &finding, std::string bytes) {
  if (!bytes.empty() && bytes.back() != '\n') {
    bytes += '\n';
  }
  finding.edits.push_back({0, finding.file->bytes().size(), std::move(bytes)});
}

// The encoding of a file of two or four bytes a character, if it is one.
std::optional<QStringConverter::Encoding> wideEncoding(std::string_view bytes) {
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  const auto marked = QStringConverter::encodingForData(view);
  if (marked && *marked != QStringConverter::Utf8) {
    return marked;
  }
  // Without a mark: of text in a Latin script every other byte is zero.
  constexpr std::size_t kLook = 4096;
  const std::string_view head = bytes.substr(0, kLook & ~std::size_t{1});
  std::size_t zerosAtEven = 0;
  std::size_t zerosAtOdd = 0;
  for (std::size_t i = 0; i < head.size(); ++i) {
    if (head[i] == '\0') {
      ++(i % 2 == 0 ? zerosAtEven : zerosAtOdd);
    }
  }
  const std::size_t many = head.size() / 4;
  if (head.size() < 4 || std::max(zerosAtEven, zerosAtOdd) <= many) {
    return std::nullopt;
  }
  return zerosAtOdd > zerosAtEven ? QStringConverter::Utf16LE : QStringConverter::Utf16BE;
}

bool reportWideEncoding(const SourceFile &file, FindingSink &sink) {
  const auto encoding = wideEncoding(file.bytes());
  if (!encoding) {
    return false;
  }
  sink.add(file, Code::kZeroBytes, [&](Finding &finding) {
    finding.line = 1;
    finding.detail = std::string("the file is in ") + QStringConverter::nameForEncoding(*encoding) +
                     ", of which nothing can be read";
    const std::string_view bytes = file.bytes();
    const QString text = QStringDecoder(*encoding).decode(
        QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    replaceFile(finding, utf8(text));
  });
  return true;
}

bool isAlone(std::string_view bytes, std::size_t carriageReturn) {
  return bytes.substr(carriageReturn + 1, 1) != "\n";
}

std::string withLineFeeds(std::string_view bytes) {
  std::string converted(bytes);
  for (std::size_t at = bytes.find('\r'); at != std::string_view::npos;
       at = bytes.find('\r', at + 1)) {
    converted[at] = isAlone(bytes, at) ? '\n' : '\r';
  }
  return converted;
}

bool reportCarriageReturns(const SourceFile &file, FindingSink &sink) {
  const std::string_view bytes = file.bytes();
  constexpr qint64 kManyMore = 4;
  qint64 alone = 0;
  std::size_t first = 0;
  for (std::size_t at = bytes.find('\r'); at != std::string_view::npos;
       at = bytes.find('\r', at + 1)) {
    if (isAlone(bytes, at)) {
      first = alone++ == 0 ? at : first;
    }
  }
  const auto feeds = static_cast<qint64>(std::count(bytes.begin(), bytes.end(), '\n'));
  if (alone == 0 || (feeds > 0 && alone <= kManyMore * feeds)) {
    return false;
  }
  sink.add(file, Code::kCarriageReturns, [&](Finding &finding) {
    const std::string_view before = bytes.substr(0, first);
    finding.line = 1 + static_cast<quint32>(std::count(before.begin(), before.end(), '\n'));
    finding.offset = first - file.begin(finding.line);
    finding.detail = std::to_string(alone) + " lines are read as one" +
                     (feeds == 0 ? ", which is thrown away" : " with the next");
    replaceFile(finding, withLineFeeds(bytes));
  });
  return true;
}

}  // namespace

bool reportWholeFile(const SourceFile &file, FindingSink &sink) {
  return reportWideEncoding(file, sink) || reportCarriageReturns(file, sink);
}

void reportEnds(const SourceFile &file, FindingSink &sink) {
  if (file.startsWithByteOrderMark()) {
    sink.add(file, Code::kByteOrderMark, [](Finding &finding) {
      finding.line = 1;
      finding.length = 3;
      finding.edits.push_back({0, 3, ""});
    });
  }
  if (file.endsWithBreak()) {
    return;
  }
  sink.add(file, Code::kNoLastBreak, [&](Finding &finding) {
    const std::string_view last = file.line(file.lineCount());
    finding.line = file.lineCount();
    finding.offset = last.size();
    finding.detail = quotedText(last) + " is thrown away";
    finding.write = "a line break behind it";
    const std::size_t end = file.bytes().size();
    finding.edits.push_back({end, end, "\n"});
  });
}

}  // namespace corvane::checks
