#pragma once

// What the layer hands to CLP, and how it asks: silence, scaled numbers, column arrays, barrier.

#include <CoinMessageHandler.hpp>
#include <span>
#include <vector>

#include "solver/linear_program.h"
#include "solver/solution.h"

class ClpSimplex;

namespace corvane::lp {

// Swallows what CLP would say, whatever its level.
class Silence : public CoinMessageHandler {
 public:
  Silence() { setLogLevel(0); }
  int print() override { return 0; }
  CoinMessageHandler *clone() const override { return new Silence(*this); }
};

// The power of two that brings a largest magnitude to the nearer end of what CLP's absolute
// tolerances are made for; 1 for ordinary sizes. No further than that end, so that the small
// numbers beside a large one stay above the tolerances.
double scaleFor(double largest);

// A bound times the scale, with CLP's own infinity, the largest double.
double clpBound(double bound, double scale);

// The price of a row between these bounds as it may be: a row that is free on one side prices one
// way only, where CLP's tolerance may leave a trace of the other. Never a negative zero.
double possiblePrice(double price, double lower, double upper);

// Chosen columns as the arrays that CLP loads, with rows renamed by `clpRow` and those of -1 left
// out.
struct ColumnArrays {
  std::vector<double> cost, lower, upper, value;
  std::vector<int> start, row;

  ColumnArrays(const ColumnPool &pool, std::span<const int> columns, std::span<const int> clpRow,
               double costScale, double boundScale);
};

Status statusOf(const ClpSimplex &clp);

// Solves by CLP's barrier with crossover and leaves `clp` at a basis from which a dual simplex
// finishes at a vertex: every column and row that is neither basic nor at a bound is moved to one.
void solveByBarrier(ClpSimplex &clp);

}  // namespace corvane::lp
