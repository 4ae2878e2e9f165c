#pragma once

// The lines of an import file as the checker looks at them: taken apart by the reader of network/,
// then held to what the program writes, to the digit.
//
// The reader takes any number where one has a meaning; here integers must be plain, numbers stand
// as general notation with 6 significant digits writes them, and what the program always writes
// alike (no stock, an undercost of 50000, machines without a cost) must stand so.

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "network/import_line.h"

namespace corvane::import_checker {

using network::Family;

// One line: its family and the text of each placeholder, by label; names without their quotes.
struct Command {
  Family family{};
  std::map<std::string, std::string, std::less<>> fields;

  // The field's text. REQUIRES: a line of the family has the label.
  const std::string &operator[](std::string_view label) const { return fields.find(label)->second; }
};

// Reads one line, given without its line break; empty when it fits no family.
std::optional<Command> parseCommand(std::string_view line);

}  // namespace corvane::import_checker
