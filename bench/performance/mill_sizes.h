#pragma once

#include <string>

#include "mill_generator.h"
#include "samples.h"

namespace corvane::bench {

// How many widths are ordered, and how many new patterns an iteration brings to a deckle width.
struct Size {
  int widths;
  int newPatterns;
  double target;  // program to plain, generation and selection
};
inline constexpr Size kSizes[] = {{20, 100, 0.5},  {60, 100, 0.5},    {60, 1000, 0.3},
                                  {150, 100, 0.4}, {150, 1000, 0.15}, {400, 100, 0.5}};

// The extent of a mill beside its size: a few columns an iteration, or some times as many.
struct Extent {
  int deckleWidths;
  int periods;
  long long orders;
};
inline constexpr Extent kSmall{1, 2, 1000};
inline constexpr Extent kLarge{3, 6, 4000};

inline MillShape millOf(const Size &size, const Extent &extent = kSmall) {
  MillShape shape;
  shape.widths = size.widths;
  shape.newPatterns = size.newPatterns;
  shape.deckleWidths = extent.deckleWidths;
  shape.periods = extent.periods;
  shape.orders = extent.orders;
  return shape;
}

inline std::string nameOf(const Size &size) {
  return std::to_string(size.widths) + " widths, " + std::to_string(size.newPatterns);
}

inline std::string nameOf(const Extent &extent) {
  return extent.deckleWidths == 1 ? "1 deckle" : std::to_string(extent.deckleWidths) + " deckles";
}

inline std::string milliseconds(double seconds) {
  return decimals(1000 * seconds, 1);
}

inline const char *verdict(bool reached) {
  return reached ? "yes" : "no";
}

}  // namespace corvane::bench
