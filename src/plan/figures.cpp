#include "plan/figures.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"

namespace corvane::plan {

std::string grouped(double value, int decimals) {
  std::string text = fixed(std::fabs(value), decimals);
  const std::size_t point = std::min(text.find('.'), text.size());
  for (std::size_t at = point; at > 3; at -= 3) {
    text.insert(at - 3, 1, ',');
  }
  return (value < 0.0 ? std::string("-") : std::string()) += text;
}

std::string count(double value) {
  return grouped(value, std::fabs(value - std::round(value)) < 1e-3 ? 0 : 1);
}

std::string percent(double part, double whole, int decimals) {
  return fixed(whole > 0.0 ? 100.0 * part / whole : 100.0, decimals) + " %";
}

}  // namespace corvane::plan
