#pragma once

// A small LP solver: the revised simplex method in two phases with a dense basis inverse (Chvatal,
// Linear Programming, 1983, chapters 3, 7 and 8). Largest coefficient pricing, Bland's rule while
// the basis is degenerate, so it ends. Plain double arithmetic in a fixed order.

#include <cstddef>
#include <vector>

namespace scripted_lp {

struct Column {
  double cost = 0.0;
  double lower = 0.0;
  double upper = 1e20;
  std::vector<int> rows;
  std::vector<double> values;
};

// Minimise the cost of the columns subject to the rows: sense G, L or E and right-hand side.
struct Lp {
  int objective_sense = 1;
  bool ranged = false;
  std::vector<char> senses;
  std::vector<double> rhs;
  std::vector<Column> columns;
};

enum Status { kUnsolved = 0, kOptimal = 1, kUnbounded = 2, kInfeasible = 3, kOther = 6 };

// The vectors are filled when the status is kOptimal: x and dj have one entry a column, pi one a
// row, >= 0 for G rows and <= 0 for L rows. dj = c - A'pi.
struct Solution {
  Status status = kUnsolved;
  double objective = 0.0;
  std::vector<double> x;
  std::vector<double> pi;
  std::vector<double> dj;
};

// REQUIRES: row indices of the columns lie within rhs and senses, which have one length.
Solution Solve(const Lp &lp);

}  // namespace scripted_lp
