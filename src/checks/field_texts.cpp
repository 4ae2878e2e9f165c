#include "checks/field_texts.h"

#include <QList>
#include <QString>
#include <algorithm>
#include <array>

#include "checks/number_form.h"
#include "checks/shown_text.h"
#include "core/numbers.h"
#include "core/text.h"

namespace corvane::checks {

namespace {

bool isControl(char32_t c) {
  return (c < 0x20 && c != '\t') || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Blanks and joiners that cannot be told from a blank, or from nothing.
bool isOddBlank(char32_t c) {
  return c == '\t' || c == 0xA0 || c == 0xAD || c == 0x1680 || (c >= 0x2000 && c <= 0x200F) ||
         c == 0x202F || c == 0x205F || (c >= 0x2060 && c <= 0x2064) || c == 0x3000 || c == 0xFEFF;
}

bool hasWidth(char32_t c) {
  return c != 0xAD && (c < 0x200B || c > 0x200F) && (c < 0x2060 || c > 0x2064) && c != 0xFEFF;
}

// Quotes that are no double quote, opening and closing.
bool standsInOtherQuotes(const QString &text) {
  static const QString kOpening = QString::fromUtf8("'’‘“”„«»‹›`´");
  return text.size() >= 3 && kOpening.contains(text.front()) && kOpening.contains(text.back());
}

bool isPrintableAscii(std::string_view field) {
  return std::all_of(field.begin(), field.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::optional<Code> faultOfCharacters(std::string_view field) {
  const auto characters = textFromBytes(field).toUcs4();
  if (std::any_of(characters.begin(), characters.end(), isControl)) {
    return Code::kControlCharacter;
  }
  if (std::any_of(characters.begin(), characters.end(), isOddBlank)) {
    return Code::kOddBlank;
  }
  return std::nullopt;
}

QString withoutOddCharacters(std::string_view field) {
  QString result;
  for (const uint c : textFromBytes(field).toUcs4()) {
    if (isOddBlank(c)) {
      result += hasWidth(c) ? QStringLiteral(" ") : QString();
    } else if (!isControl(c)) {
      result += QString::fromUcs4(reinterpret_cast<const char32_t *>(&c), 1);
    }
  }
  return result;
}

std::string readNumber(std::string_view field, FieldKind kind) {
  const std::string text(field);
  if (kind == FieldKind::kQuantity) {
    return std::to_string(leadingInteger(text.c_str()));
  }
  return general(leadingNumber(text.c_str()));
}

void describeNumber(Finding &finding, std::string_view field, std::string_view name,
                    FieldKind kind) {
  const NumberForm form =
      kind == FieldKind::kQuantity ? formOfQuantity(field) : formOfNumber(field);
  finding.detail =
      std::string(name) + " " + quotedText(field) + " is read as " + readNumber(field, kind);
  finding.write = form.meant;
}

bool isEnclosedInQuotes(std::string_view field) {
  return field.size() >= 2 && field.front() == '"' && field.back() == '"' &&
         field.find('"', 1) == field.size() - 1;
}

std::string detailOfName(Code code, std::string_view field, std::string_view name) {
  const std::string subject = std::string(name) + " " + quotedText(field);
  switch (code) {
    case Code::kNotUtf8:
      return subject + " is read as Latin-1";
    case Code::kDoubleQuote:
      return subject + " is read with the quotes";
    default:
      return subject + " is not " + quotedText(cleanedName(field));
  }
}

}  // namespace

std::optional<Code> faultOfName(std::string_view field) {
  if (field.find('"') != std::string_view::npos) {
    return Code::kDoubleQuote;
  }
  if (!isPrintableAscii(field)) {
    if (const auto code = faultOfCharacters(field)) {
      return code;
    }
  }
  if (!field.empty() && (field.front() == ' ' || field.back() == ' ')) {
    return Code::kOuterBlank;
  }
  if (standsInOtherQuotes(textFromBytes(field))) {
    return Code::kOtherQuotes;
  }
  return isUtf8(field) ? std::nullopt : std::optional(Code::kNotUtf8);
}

std::optional<Code> faultOfNumber(std::string_view field, FieldKind kind) {
  if (field.find('"') != std::string_view::npos) {
    return Code::kDoubleQuote;
  }
  const NumberForm form =
      kind == FieldKind::kQuantity ? formOfQuantity(field) : formOfNumber(field);
  if (form.code || isPrintableAscii(field)) {
    return form.code;
  }
  return faultOfCharacters(field);
}

std::optional<BytePlace> firstControlCharacter(std::string_view text) {
  const auto isOdd = [](char c) { return c < ' ' || c > '~'; };
  if (std::none_of(text.begin(), text.end(), isOdd)) {
    return std::nullopt;
  }
  const QList<uint> characters = textFromBytes(text).toUcs4();
  const auto found = std::find_if(characters.begin(), characters.end(), isControl);
  if (found == characters.end()) {
    return std::nullopt;
  }
  const auto bytes = [&](qsizetype from, qsizetype count) {
    return isUtf8(text) ? utf8(QString::fromUcs4(
                                   reinterpret_cast<const char32_t *>(&characters[from]), count))
                              .size()
                        : static_cast<std::size_t>(count);
  };
  const qsizetype at = found - characters.begin();
  return BytePlace{bytes(0, at), bytes(at, 1)};
}

FieldFacts FieldTexts::lookAt(std::string_view field) {
  if (kind_ == FieldKind::kName) {
    return {faultOfName(field), texts_.idOf(field), 0};
  }
  return {faultOfNumber(field, kind_), 0, leadingNumber(field.data())};
}

std::string cleanedName(std::string_view field) {
  QString text = withoutOddCharacters(field).remove(QLatin1Char('"')).trimmed();
  if (standsInOtherQuotes(text)) {
    text = text.mid(1, text.size() - 2).trimmed();
  }
  return utf8(text);
}

void describeField(Finding &finding, std::string_view field, std::string_view name,
                   FieldKind kind) {
  const bool isNumber = kind != FieldKind::kName;
  if (isNumber && finding.code != Code::kDoubleQuote && finding.code != Code::kOddBlank &&
      finding.code != Code::kControlCharacter) {
    describeNumber(finding, field, name, kind);
  } else {
    finding.detail = isNumber ? std::string(name) + " " + quotedText(field) + " is read as " +
                                    readNumber(field, kind)
                              : detailOfName(finding.code, field, name);
    finding.write = cleanedName(field);
  }
  if (finding.code == Code::kDoubleQuote && !isEnclosedInQuotes(field)) {
    finding.fixKind = FixKind::kUnsafe;
  }
  if (finding.write.empty()) {
    finding.fixKind = FixKind::kNone;
    return;
  }
  const std::size_t begin = finding.file->begin(finding.line) + finding.offset;
  finding.edits.push_back({begin, begin + field.size(), finding.write});
}

}  // namespace corvane::checks
