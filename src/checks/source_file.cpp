#include "checks/source_file.h"

#include <cstring>
#include <fstream>
#include <utility>

#include "core/files.h"

namespace corvane::checks {

SourceFile::SourceFile(std::string name, std::string bytes)
    : name_(std::move(name)), bytes_(std::move(bytes)) {
  const char *end = bytes_.data() + bytes_.size();
  for (const char *at = bytes_.data(); at != end;) {
    begins_.push_back(static_cast<std::size_t>(at - bytes_.data()));
    const auto *lineBreak =
        static_cast<const char *>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
    at = lineBreak != nullptr ? lineBreak + 1 : end;
  }
}

std::string_view SourceFile::line(quint32 number) const {
  if (number == 0 || number > lineCount()) {
    return {};
  }
  std::string_view text = bytes().substr(begin(number), end(number) - begin(number));
  if (text.empty() || text.back() != '\n') {
    return text;
  }
  text.remove_suffix(1);
  if (!text.empty() && text.back() == '\r') {
    text.remove_suffix(1);
  }
  return text;
}

std::size_t SourceFile::end(quint32 number) const {
  return number < lineCount() ? begins_[number] : bytes_.size();
}

bool readBytes(const std::string &path, std::string &bytes) {
  std::ifstream file;
  if (!openForReading(file, path)) {
    return false;
  }
  constexpr std::size_t kBlock = std::size_t{1} << 20U;
  bytes.clear();
  while (file) {
    const std::size_t before = bytes.size();
    bytes.resize(before + kBlock);
    file.read(bytes.data() + before, static_cast<std::streamsize>(kBlock));
    bytes.resize(before + static_cast<std::size_t>(file.gcount()));
  }
  return !file.bad();
}

}  // namespace corvane::checks
