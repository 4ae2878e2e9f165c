#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "checks/check_table.h"

namespace corvane::checks {

// Whether the text of a number says what is read from it. A field of a data file is read up to the
// first character that does not belong to a number; blanks around one do no harm.

struct NumberForm {
  // What is wrong: kTextAfterNumber, kNoNumber, kNumberForm or kQuantityDecimals.
  std::optional<Code> code;
  // What was meant, as far as can be told; may be empty.
  std::string meant;
};

NumberForm formOfNumber(std::string_view field);
// A quantity is an integer, so that decimals are cut off and 1.060 may be meant as 1060.
NumberForm formOfQuantity(std::string_view field);

// A plain decimal number: a sign, digits, one point; nothing around them.
bool isPlainNumber(std::string_view text);
bool isDigits(std::string_view text);

// The text without blanks, no-break spaces and tabs at its ends.
std::string_view withoutOuterBlanks(std::string_view text);

}  // namespace corvane::checks
