#pragma once

#include <string>
#include <string_view>

#include "checks/record_layout.h"

namespace corvane::checks {

// A line as spreadsheets write it where the comma is the decimal sign: fields between semicolons,
// tabs or bars.

// The separator of a line that it cuts into about the expected fields, and commas do not; or 0.
char otherSeparator(std::string_view line, int expected);

// Every such line of the text with commas between the fields, points in the numbers and without the
// quotes around fields; other lines stay as they are.
std::string commaSeparated(std::string_view text, Layout layout);

}  // namespace corvane::checks
