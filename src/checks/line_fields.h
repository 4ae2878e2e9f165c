#pragma once

#include <array>
#include <string_view>

namespace corvane::checks {

// The fields of a line as the program splits it.
struct LineFields {
  // A line may have hundreds; of those beyond only the count matters.
  static constexpr int kMost = 24;

  std::array<std::string_view, kMost> fields;
  int count = 0;
  // Whether commas lead, trail or stand next to each other.
  bool hasCommaRun = false;

  std::string_view operator[](int at) const { return fields[static_cast<std::size_t>(at)]; }
};

// Splits the line, which a NUL ends, in place.
LineFields splitLine(char *line);

}  // namespace corvane::checks
