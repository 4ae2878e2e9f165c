#pragma once

namespace corvane::lp {

// The sizes at which the layer changes its ways, measured on mills of 20 to 400 widths. Tests hand
// in others, so that a program of ten rows takes every road.
struct Thresholds {
  // Up to these many columns a row, a dual simplex on all of them is quicker than sifting from a
  // start set; from a set known to be promising sifting pays sooner.
  int wholePerRow = 40;
  int wholeKnownPerRow = 10;

  // With fewer rows than `smallRows`, up to `smallBatch` new columns go to CLP as they are: that is
  // quicker than choosing among them. With fewer than `smallestRows`, nothing is taken out for
  // them.
  int smallBatch = 100;
  int smallRows = 64;
  int smallestRows = 40;

  // A round of sifting moves in as many columns as there are rows, but at least these.
  int leastMovedIn = 50;

  // A working set of more than `surplusPerRow` columns a row is cut to `keptPerRow`.
  int surplusPerRow = 3;
  int keptPerRow = 2;

  // Up to `dantzigRows` rows Dantzig's rule takes hardly more pivots than steepest edges, and each
  // costs less. From `otherFactorRows` on, CLP's other factorisation is quicker on bases as dense
  // as those of a warm start.
  int dantzigRows = 64;
  int otherFactorRows = 350;
};

}  // namespace corvane::lp
