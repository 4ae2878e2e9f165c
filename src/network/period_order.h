#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::network {

// Whether a comes before b where numbers within the names count as numbers: "week 9" before
// "week 10".
bool naturallyBefore(std::string_view a, std::string_view b);

// The neighbours that are the wrong way round, as `"3" before "1"`; empty when all are sorted.
std::string unsortedPeriods(const std::vector<std::string> &periods);

}  // namespace corvane::network
