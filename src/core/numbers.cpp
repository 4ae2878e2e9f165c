#include "core/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
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

qint32 leadingInteger(const char *text) {
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
