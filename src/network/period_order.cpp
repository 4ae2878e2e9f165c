#include "network/period_order.h"

#include <algorithm>

namespace corvane::network {

namespace {

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

// Takes the digits off the front, leading zeros dropped.
std::string_view takeNumber(std::string_view &text) {
  const auto end =
      static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
  std::string_view number = text.substr(0, end);
  text.remove_prefix(end);
  number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
  return number;
}

}  // namespace

bool naturallyBefore(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    if (isDigit(a.front()) && isDigit(b.front())) {
      const std::string_view x = takeNumber(a);
      const std::string_view y = takeNumber(b);
      if (x != y) {
        return x.size() != y.size() ? x.size() < y.size() : x < y;
      }
    } else if (a.front() != b.front()) {
      return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front());
    } else {
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  return a.empty() && !b.empty();
}

std::string unsortedPeriods(const std::vector<std::string> &periods) {
  std::string text;
  for (std::size_t at = 1; at < periods.size(); ++at) {
    if (naturallyBefore(periods[at], periods[at - 1])) {
      text += (text.empty() ? "\"" : ", \"") + periods[at - 1] + "\" before \"" + periods[at] + '"';
    }
  }
  return text;
}

}  // namespace corvane::network
