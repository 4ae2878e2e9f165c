#pragma once

#include <iosfwd>

#include "core/checked_array.h"

namespace corvane {

// The arrays of one LP as the solver takes them: minimise, rows >= right-hand side, columns from 0
// to infinity. Each part that cannot be had ends the run with words of its own; the parts are taken
// in the order in which they stand here.
struct LpArrays {
  static constexpr double kInfinity = 1e20;
  static constexpr int kMinimise = 1;

  // All objective coefficients start as `value`.
  void allocateObjective(std::size_t columns, double value, std::ostream &log);
  void allocateSenses(std::size_t rows, std::ostream &log);
  void allocateMatrix(std::size_t columns, std::size_t nonzeros, std::ostream &log);
  void allocateBounds(std::size_t columns, std::ostream &log);
  // All 0.
  void allocateRightHandSides(std::size_t rows, std::ostream &log);

  int columns() const { return static_cast<int>(objective.size()); }
  int rows() const { return static_cast<int>(senses.size()); }

  CheckedArray<double> objective;
  CheckedArray<char> senses;
  CheckedArray<int> starts;
  CheckedArray<int> counts;
  CheckedArray<int> indices;
  CheckedArray<double> values;
  CheckedArray<double> lower;
  CheckedArray<double> upper;
  CheckedArray<double> rightHandSides;
};

}  // namespace corvane
