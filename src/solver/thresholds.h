#pragma once

namespace corvane::lp {

// The sizes at which the layer changes its ways, and what that gains of the processor time of
// master or final LPs on mills of 20 to 400 widths. Tests hand in others, so that a program of ten
// rows takes every road.
struct Thresholds {
  // Up to these many columns a row, a dual simplex on all of them is quicker than sifting from a
  // start set: 3 % of final LPs. From a set known to be promising sifting pays sooner, 5 to 10 %.
  int wholePerRow = 40;
  int wholeKnownPerRow = 10;

  // With fewer rows than `smallRows`, up to `smallBatch` new columns go to CLP as they are: that is
  // quicker than choosing among them, by 10 to 50 % of masters of 20 rows; beyond, choosing gains
  // 10 %. With fewer than `smallestRows`, nothing is taken out for them: 10 to 20 % of such
  // masters.
  int smallBatch = 100;
  int smallRows = 64;
  int smallestRows = 40;

  // A round of sifting moves in as many columns as there are rows, but at least these. Fewer take
  // no longer, but small programs then end at other optima, whose plans cost more.
  int leastMovedIn = 50;

  // A working set of more than `surplusPerRow` columns a row is cut to `keptPerRow`: 15 to 55 % of
  // masters from 60 rows on.
  int surplusPerRow = 3;
  int keptPerRow = 2;

  // Up to `dantzigRows` rows Dantzig's rule takes hardly more pivots than steepest edges, and each
  // costs less: 12 % of masters of 20 rows. From `otherFactorRows` on, CLP's other factorisation is
  // quicker on bases as dense as those of a warm start: 22 % of masters of 400 rows.
  int dantzigRows = 64;
  int otherFactorRows = 350;
};

}  // namespace corvane::lp
