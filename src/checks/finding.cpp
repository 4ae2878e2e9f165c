#include "checks/finding.h"

#include <QCryptographicHash>
#include <algorithm>
#include <utility>

#include "checks/shown_text.h"

namespace corvane::checks {

std::string messageOf(const Finding &finding) {
  std::string text(checkOf(finding.code).title);
  return finding.detail.empty() ? text : text + ": " + finding.detail;
}

MarkedText markedText(const Finding &finding) {
  std::string_view line = finding.file->line(finding.line);
  std::size_t begin = std::min(finding.offset, line.size());
  std::size_t end = std::min(begin + finding.length, line.size());
  if (finding.code != Code::kByteOrderMark) {
    const std::size_t mark = finding.file->markLength(finding.line);
    line.remove_prefix(mark);
    begin -= std::min(begin, mark);
    end -= std::min(end, mark);
  }
  return {line, begin, end - begin};
}

std::size_t columnOf(const Finding &finding) {
  const MarkedText text = markedText(finding);
  return characterCount(text.line, 0, text.begin) + 1;
}

std::size_t widthOf(const Finding &finding) {
  const MarkedText text = markedText(finding);
  return std::max<std::size_t>(1, characterCount(text.line, text.begin, text.begin + text.length));
}

void replaceMarked(Finding &finding, std::string text) {
  const std::size_t begin = finding.file->begin(finding.line) + finding.offset;
  finding.edits.push_back({begin, begin + finding.length, text});
  finding.write = std::move(text);
}

void dropLine(Finding &finding) {
  const SourceFile &file = *finding.file;
  finding.edits.push_back({file.begin(finding.line), file.end(finding.line), ""});
}

std::string keyOf(const Finding &finding) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  const auto add = [&](std::string_view text) {
    hash.addData(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
    hash.addData(QByteArray(1, '\0'));
  };
  add(codeText(finding.code));
  add(finding.file->name());
  add(finding.file->line(finding.line));
  constexpr int kDigits = 16;
  return hash.result().toHex().left(kDigits).toStdString();
}

}  // namespace corvane::checks
