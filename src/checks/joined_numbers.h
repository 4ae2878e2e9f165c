#pragma once

#include <optional>
#include <string>
#include <vector>

#include "checks/line_fields.h"
#include "checks/record_layout.h"

namespace corvane::checks {

// How a line with too many fields becomes a record when neighbours are halves of one number: 44,75
// as a width is 44.75, 1,200 as a quantity 1200, and 1,024.25 as a rate 1024.25.
struct JoinedNumbers {
  struct Join {
    int first;         // of the two fields
    bool isThousands;  // or else a decimal comma
    std::string number;
  };
  std::vector<Join> joins;  // at least one
  bool isSole = true;       // false: there are other ways
};

// Nothing where no way gives the layout its fields.
std::optional<JoinedNumbers> joinNumbers(const LineFields &line, Layout layout);

}  // namespace corvane::checks
