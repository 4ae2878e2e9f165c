#pragma once

#include <QString>
#include <string>
#include <vector>

namespace corvane::checks {

// The numbers in the name of a period, and what stands around them: "W07" is 7, "2024-03" is 2024
// and 3.
struct PeriodName {
  std::u16string shape;  // the name with "#" for every run of digits
  std::vector<qint64> numbers;
};

PeriodName periodName(const QString &text);

}  // namespace corvane::checks
