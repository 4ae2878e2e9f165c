#include "core/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace corvane {

namespace {

// The largest double has 309 digits before the point.
using NumberBuffer = std::array<char, 352>;

constexpr qint32 kLargest = std::numeric_limits<qint32>::max();

template <typename... Format>
void appendNumber(std::string &text, Format... format) {
  NumberBuffer buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), format...);
  text.append(buffer.data(), result.ptr);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

qint32 parameterInteger(const QString &text) {
  return text.toInt();
}

double parameterFloat(const QString &text) {
  bool valid = false;
  const float value = text.toFloat(&valid);
  return valid && std::isfinite(value) ? static_cast<double>(value) : 0.0;
}

double leadingNumber(const char *text) {
  // What begins with a digit reads alike both ways, up to hexadecimal and to what does not fit.
  const char *end = text + std::strspn(text, "0123456789.");
  double value = 0;
  const bool isPlain = isDigit(*text) && *end == '\0';
  if (isPlain && std::from_chars(text, end, value).ec == std::errc()) {
    return value;
  }
  return std::strtod(text, nullptr);
}

qint32 leadingInteger(const char *text) {
  // A few digits, as nearly all are, need no look at what fits.
  constexpr int kSureDigits = 9;
  qint32 plain = 0;
  int digits = 0;
  for (; digits < kSureDigits && isDigit(text[digits]); ++digits) {
    plain = 10 * plain + (text[digits] - '0');
  }
  if (digits > 0 && !isDigit(text[digits])) {
    return plain;
  }
  const long long value = std::strtoll(text, nullptr, 10);
  constexpr long long kLowest = std::numeric_limits<qint32>::min();
  return static_cast<qint32>(std::clamp<long long>(value, kLowest, kLargest));
}

qint32 saturatedSum(qint32 a, qint32 b) {
  return b > kLargest - a ? kLargest : a + b;
}

void appendGeneral(std::string &text, double value) {
  appendNumber(text, value, std::chars_format::general, 6);
}

void appendFixed(std::string &text, double value, int decimals) {
  appendNumber(text, value, std::chars_format::fixed, decimals);
}

void appendInteger(std::string &text, qint64 value) {
  appendNumber(text, value);
}

std::string general(double value) {
  std::string text;
  appendGeneral(text, value);
  return text;
}

std::string fixed(double value, int decimals) {
  std::string text;
  appendFixed(text, value, decimals);
  return text;
}

}  // namespace corvane
