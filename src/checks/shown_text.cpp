#include "checks/shown_text.h"

#include <QList>
#include <QString>
#include <QUtf8StringView>
#include <algorithm>

#include "core/text.h"

namespace corvane::checks {

namespace {

// What stands for a character that would not be seen, or would be seen too well.
char32_t signOf(char32_t character) {
  constexpr char32_t kControlSigns = 0x2400;
  constexpr char32_t kDeleteSign = 0x2421;
  constexpr char32_t kBlankSign = 0x237D;
  constexpr char32_t kHiddenSign = 0xFFFD;
  if (character < 0x20) {
    return kControlSigns + character;
  }
  if (character == 0x7F) {
    return kDeleteSign;
  }
  if (character == 0xA0 || character == 0x202F || character == 0x2007) {
    return kBlankSign;
  }
  const bool isHidden = (character >= 0x80 && character < 0xA0) || character == 0xAD ||
                        (character >= 0x200B && character <= 0x200F) ||
                        (character >= 0x2028 && character <= 0x202E) ||
                        (character >= 0x2060 && character <= 0x206F) || character == 0xFEFF;
  return isHidden ? kHiddenSign : character;
}

std::u32string charactersOf(std::string_view text) {
  std::u32string result;
  for (const uint character : textFromBytes(text).toUcs4()) {
    result += signOf(character);
  }
  return result;
}

std::string utf8Of(std::u32string_view text) {
  return QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size())).toStdString();
}

}  // namespace

std::string shown(std::string_view text) {
  return utf8Of(charactersOf(text));
}

std::string quotedText(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  std::u32string characters = charactersOf(text);
  if (characters.size() > kLongest) {
    characters.resize(kLongest);
    characters += U'…';
  }
  return '"' + utf8Of(characters) + '"';
}

bool isUtf8(std::string_view text) {
  return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

std::size_t characterCount(std::string_view line, std::size_t begin, std::size_t end) {
  if (!isUtf8(line)) {
    return end - begin;
  }
  const std::string_view part = line.substr(begin, end - begin);
  return static_cast<std::size_t>(std::count_if(part.begin(), part.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

MarkedLine markedLine(std::string_view line, std::size_t begin, std::size_t length) {
  constexpr std::size_t kWidest = 100;
  constexpr std::size_t kBefore = 40;
  begin = std::min(begin, line.size());
  std::u32string before = charactersOf(line.substr(0, begin));
  std::u32string marked = charactersOf(line.substr(begin, length));
  std::u32string behind = charactersOf(line.substr(std::min(begin + length, line.size())));
  if (before.size() + marked.size() + behind.size() > kWidest) {
    if (before.size() > kBefore) {
      before = U"…" + before.substr(before.size() - kBefore);
    }
    if (marked.size() > kBefore) {
      marked = marked.substr(0, kBefore) + U"…";
      behind.clear();
    }
    if (const std::size_t room = kWidest - before.size() - marked.size(); behind.size() > room) {
      behind = behind.substr(0, room) + U"…";
    }
  }
  const std::size_t tail = marked.empty() ? 0 : marked.size() - 1;
  return {utf8Of(before + marked + behind),
          std::string(before.size(), ' ') + "^" + std::string(tail, '~')};
}

}  // namespace corvane::checks
