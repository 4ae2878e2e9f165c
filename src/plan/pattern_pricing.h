#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace corvane::plan {

// The pattern that is worth most for given values of its rolls, found exactly:
//
//   maximise   sum v_i n_i
//   subject to sum w_i n_i <= deckle,  sum n_i <= limit,  n_i >= 0 and whole
//
// an unbounded knapsack with a limit on the number of rolls. Widths and values are any doubles; no
// grid is laid under them. Where a pattern pays for its trim, that is part of the values: a roll is
// worth its profit and the waste that it saves, v = profit + waste cost x width, and the deckle's
// whole width is paid beforehand.
//
// The method is branch and bound, depth first, by value per inch (Gilmore and Gomory, "A linear
// programming approach to the cutting-stock problem, part II", Operations Research 11, 1963;
// Martello and Toth, "Knapsack Problems", 1990, chapter 3). Both limits are in its bound: k rolls
// out of c inches are worth at most k h(c / k), where h is the upper concave hull of the points (0,
// 0) and (w_i, v_i) of the rolls that may still be taken: the linear relaxation, solved. Where
// values are nearly in proportion to widths that are on no grid (a subset-sum problem), bounds cut
// little; a search that lasts completes its cuts from a table of all cuts of a few rolls, sorted by
// width (Horowitz and Sahni, "Computing partitions with applications to the knapsack problem",
// Journal of the ACM 21, 1974).

struct Roll {
  double width = 0;  // inches, above 0
  double value = 0;  // money
};

struct Cut {
  double value = 0;
  std::vector<std::size_t> rolls;  // indices into the rolls given, one entry a roll, widest first
};

// A cut may exceed its deckle by this, inches: the noise of the additions.
inline constexpr double kFitTolerance = 1e-9;

// Relative: a cut that is worth more by no more than this is not looked for.
inline constexpr double kValueGap = 1e-9;

// The best cut, where it is worth more than `above`; else nothing. No cut is worth more than
// the one returned, or than `above`, by over kValueGap of it. Of equal values the first one that
// the search meets is taken, the same on every machine. Rolls of no value are never taken.
std::optional<Cut> bestCut(const std::vector<Roll> &rolls, double deckle, int limit, double above);

}  // namespace corvane::plan
