#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace corvane::checks {

// A width that seems to be in another unit than inches.
struct OtherUnit {
  std::string_view name;  // "millimetres"
  double inches;          // what the number is in inches
};

// Of a deckle, above 0, beside those of the other cutters. Nothing where it may well be inches.
std::optional<OtherUnit> unitOfDeckle(double deckle, std::vector<double> others);

// Of a roll that is wider than the widest deckle of its grade, beside the other widths of the
// grade.
std::optional<OtherUnit> unitOfWideRoll(double width, double widestDeckle,
                                        const std::vector<double> &others);

// Of a roll beside the other widths of its grade: one in feet.
std::optional<OtherUnit> unitOfNarrowRoll(double width, const std::vector<double> &others);

}  // namespace corvane::checks
