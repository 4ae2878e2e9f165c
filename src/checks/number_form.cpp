#include "checks/number_form.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "formats/number_text.h"

namespace corvane::checks {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Blanks that a spreadsheet or a keyboard writes, in UTF-8; the last one in Latin-1.
constexpr std::array<std::string_view, 9> kBlanks = {
    " ", "\t", "\v", "\f", "\r", "\xc2\xa0", "\xe2\x80\xaf", "\xe2\x80\x89", "\xa0"};
constexpr std::array<std::string_view, 8> kThousandsMarks = {
    "'", "\xe2\x80\x99", " ", "\xc2\xa0", "\xe2\x80\xaf", "\xe2\x80\x89", "_", "\xa0"};

std::string_view withoutSign(std::string_view text) {
  return !text.empty() && (text[0] == '+' || text[0] == '-') ? text.substr(1) : text;
}

// The digits of groups of three that marks divide, and a fraction behind them as in "1'060.5";
// empty where the text is none. The point counts as a mark where it is one of the marks.
template <typename Marks>
std::string joinedGroups(std::string_view text, const Marks &marks) {
  const auto isGroup = [](std::string_view group) { return group.size() == 3 && isDigits(group); };
  std::string digits;
  std::size_t groups = 0;
  while (!text.empty() && isDigit(text[0])) {
    const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
    const std::string_view group = text.substr(0, length);
    if (groups == 0 ? length > 3 : !isGroup(group)) {
      return {};
    }
    digits += group;
    ++groups;
    text.remove_prefix(length);
    const auto mark = std::find_if(marks.begin(), marks.end(), [&](std::string_view candidate) {
      return text.rfind(candidate, 0) == 0;
    });
    if (mark == marks.end()) {
      break;
    }
    text.remove_prefix(mark->size());
  }
  if (groups < 2) {
    return {};
  }
  if (!text.empty() && (text[0] == '.' || text[0] == ',') && isDigits(text.substr(1))) {
    return digits + "." + std::string(text.substr(1));
  }
  return text.empty() ? digits : std::string();
}

std::string leadingPart(std::string_view text) {
  std::size_t length = text.size() - withoutSign(text).size();
  bool hasPoint = false;
  while (length < text.size() && (isDigit(text[length]) || (text[length] == '.' && !hasPoint))) {
    hasPoint = hasPoint || text[length] == '.';
    ++length;
  }
  return std::string(text.substr(0, length));
}

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return result;
}

// Words, hexadecimal and exponents, which the standard library reads as numbers.
bool isOddForm(std::string_view text) {
  const std::string body = lower(withoutSign(text));
  if (body.rfind("nan", 0) == 0 || body.rfind("inf", 0) == 0 || body.rfind("0x", 0) == 0) {
    return true;
  }
  const std::size_t exponent = body.find('e');
  return exponent != std::string::npos && isPlainNumber(body.substr(0, exponent)) &&
         isDigits(withoutSign(std::string_view(body).substr(exponent + 1)));
}

double valueOf(std::string_view text) {
  return std::strtod(std::string(text).c_str(), nullptr);
}

// A number like 39.375, which is a width rather than 39375 with a point between thousands.
bool isWidthInEighths(std::string_view text) {
  constexpr double kNarrowestRoll = 4;
  const double eighths = 8 * valueOf(text);
  return eighths > 8 * kNarrowestRoll && eighths == std::floor(eighths);
}

std::string plainText(std::string_view text) {
  const double value = valueOf(text);
  const bool isUsual = std::isfinite(value) && std::fabs(value) < 1e15;
  return isUsual ? std::string(NumberText(value).view()) : std::string();
}

// What is left when a currency sign or a word in front goes.
std::string numberInside(std::string_view text) {
  const std::size_t first = text.find_first_of("0123456789");
  if (first == std::string_view::npos) {
    return {};
  }
  const std::string_view rest = text.substr(first);
  return isPlainNumber(rest) ? std::string(rest) : std::string();
}

}  // namespace

bool isDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

bool isPlainNumber(std::string_view text) {
  text = withoutSign(text);
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) {
    return isDigits(text);
  }
  const std::string_view before = text.substr(0, point);
  const std::string_view behind = text.substr(point + 1);
  return (isDigits(before) && (behind.empty() || isDigits(behind))) ||
         (before.empty() && isDigits(behind));
}

std::string_view withoutOuterBlanks(std::string_view text) {
  const auto removeOne = [&] {
    return std::any_of(kBlanks.begin(), kBlanks.end(), [&](std::string_view blank) {
      if (text.size() >= blank.size() && text.substr(0, blank.size()) == blank) {
        text.remove_prefix(blank.size());
        return true;
      }
      // A lone byte of Latin-1 ends many a character of UTF-8.
      if (blank != "\xa0" && text.size() >= blank.size() &&
          text.substr(text.size() - blank.size()) == blank) {
        text.remove_suffix(blank.size());
        return true;
      }
      return false;
    });
  };
  while (removeOne()) {
  }
  return text;
}

NumberForm formOfNumber(std::string_view field) {
  if (isPlainNumber(field)) {
    return {};
  }
  const std::string_view text = withoutOuterBlanks(field);
  const bool startsRight = !field.empty() && static_cast<unsigned char>(field[0]) < 0x80;
  if (isPlainNumber(text) && startsRight) {
    return {};
  }
  if (isOddForm(text)) {
    return {Code::kNumberForm, plainText(text)};
  }
  const std::string leading = leadingPart(text);
  if (startsRight && isPlainNumber(leading)) {
    const std::string joined = joinedGroups(text, kThousandsMarks);
    return {Code::kTextAfterNumber, joined.empty() ? leading : joined};
  }
  return {Code::kNoNumber, numberInside(text)};
}

NumberForm formOfQuantity(std::string_view field) {
  if (isDigits(field)) {
    return {};
  }
  NumberForm form = formOfNumber(field);
  const std::string_view text = withoutOuterBlanks(field);
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) {
    return form;
  }
  constexpr std::array<std::string_view, 1> kPoint = {"."};
  const bool isWhole = text.find_first_not_of('0', point + 1) == std::string_view::npos;
  std::string joined = joinedGroups(text, kPoint);
  if (form.code) {
    return joined.empty() ? form : NumberForm{form.code, std::move(joined)};
  }
  if (!joined.empty() && (isWhole || !isWidthInEighths(text))) {
    return {Code::kTextAfterNumber, std::move(joined)};
  }
  if (isWhole) {
    return {};
  }
  return {Code::kQuantityDecimals, std::string(NumberText(std::round(valueOf(text))).view())};
}

}  // namespace corvane::checks
