#pragma once

#include <optional>
#include <string>
#include <unordered_map>

namespace corvane::checks {

// The keys of the findings in a file of the JSON format, with how often each occurs. Nothing, and
// what is wrong in fault, when it cannot be read.
std::optional<std::unordered_map<std::string, int>> readBaseline(const std::string &path,
                                                                 std::string &fault);

}  // namespace corvane::checks
