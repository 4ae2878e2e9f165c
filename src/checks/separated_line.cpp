#include "checks/separated_line.h"

#include <algorithm>

namespace corvane::checks {

namespace {

constexpr std::string_view kSeparators = ";\t|";

std::string_view withoutQuotes(std::string_view field) {
  const bool isQuoted = field.size() >= 2 && field.front() == '"' && field.back() == '"';
  return isQuoted ? field.substr(1, field.size() - 2) : field;
}

// A comma in a number is its decimal sign; points in front of it, and marks, divide thousands.
std::string plainNumber(std::string_view field) {
  std::string number(field);
  if (number.find(',') == std::string::npos) {
    return number;
  }
  number.erase(std::remove_if(number.begin(), number.end(),
                              [](char c) { return c == '.' || c == '\'' || c == ' '; }),
               number.end());
  std::replace(number.begin(), number.end(), ',', '.');
  return number;
}

std::string convertedLine(std::string_view line, Layout layout) {
  const char separator = otherSeparator(line, static_cast<int>(layout.size()));
  if (separator == '\0') {
    return std::string(line);
  }
  std::string result;
  for (std::size_t column = 0; !line.empty(); ++column) {
    const std::size_t end = std::min(line.find(separator), line.size());
    const std::string_view field = withoutQuotes(line.substr(0, end));
    const bool isNumber = column < layout.size() && layout[column].kind != FieldKind::kName;
    result += (column > 0 ? "," : "") + (isNumber ? plainNumber(field) : std::string(field));
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return result;
}

}  // namespace

char otherSeparator(std::string_view line, int expected) {
  const auto partsOf = [line](char separator) {
    return static_cast<int>(std::count(line.begin(), line.end(), separator)) + 1;
  };
  for (const char separator : kSeparators) {
    if (partsOf(separator) >= expected - 1 && partsOf(separator) > partsOf(',')) {
      return separator;
    }
  }
  return '\0';
}

std::string commaSeparated(std::string_view text, Layout layout) {
  std::string result;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::size_t next = std::min(text.find_first_not_of("\r\n", end), text.size());
    result += convertedLine(text.substr(0, end), layout);
    result += text.substr(end, next - end);
    text.remove_prefix(next);
  }
  return result;
}

}  // namespace corvane::checks
