#include "samples.h"

#include <algorithm>
#include <cstdio>

namespace corvane::bench {

double Samples::median() const {
  if (values_.empty()) {
    return 0;
  }
  std::vector<double> sorted = values_;
  std::sort(sorted.begin(), sorted.end());
  const std::size_t half = sorted.size() / 2;
  return sorted.size() % 2 == 1 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2;
}

double Samples::lowest() const {
  return values_.empty() ? 0 : *std::min_element(values_.begin(), values_.end());
}

double Samples::highest() const {
  return values_.empty() ? 0 : *std::max_element(values_.begin(), values_.end());
}

std::string decimals(double value, int count) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", count, value);
  return text;
}

std::string withSpread(const Samples &ratios) {
  return decimals(ratios.median(), 2) + " (" + decimals(ratios.lowest(), 2) + " to " +
         decimals(ratios.highest(), 2) + ")";
}

std::string percent(double share) {
  return decimals(100 * share, share < 0.0995 ? 1 : 0) + " %";
}

}  // namespace corvane::bench
