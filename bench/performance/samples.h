#pragma once

#include <string>
#include <vector>

namespace corvane::bench {

// Repeated measurements of one thing.
class Samples {
 public:
  void add(double value) { values_.push_back(value); }
  // 0 when there are none.
  double median() const;
  double lowest() const;
  double highest() const;

 private:
  std::vector<double> values_;
};

// "0.41 (0.38 to 0.44)": median and spread.
std::string withSpread(const Samples &ratios);

std::string decimals(double value, int count);
// A share of 1 as "12 %".
std::string percent(double share);

}  // namespace corvane::bench
