#pragma once

#include <QLinkedList>
#include <iosfwd>
#include <vector>

#include "generation/lp_arrays.h"
#include "generation/width_tally.h"

namespace corvane {

// The columns that one iteration adds to the master LP. Memory is taken as columns arrive; what
// cannot be had ends the run.
class PendingColumns {
 public:
  explicit PendingColumns(std::ostream &log) : log_(log) {}

  // Empties the arrays and takes the first memory for each.
  void prepare();
  // Appends the column of a pattern: cost in inches, rows distinct and descending.
  void append(double cost, const QLinkedList<double> &widths, const std::vector<double> &rowWidths);
  // Frees the arrays.
  void release();

  // objective, starts, indices, values, lower and upper are filled.
  const LpArrays &columns() const { return columns_; }

 private:
  void requireObjective(bool had);
  void requireMatrix(bool had);
  void requireLower(bool had);
  void requireUpper(bool had);

  std::ostream &log_;
  LpArrays columns_;
  std::vector<TallyEntry> tally_;
};

}  // namespace corvane
