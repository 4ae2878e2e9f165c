#pragma once

#include <cstddef>
#include <vector>

#include "plan/cut_table.h"

namespace corvane::plan {

// The best cut by dynamic programming, for widths that are whole multiples of one unit, such as
// eighths of an inch or millimetres: the most that k rolls are worth within so many units, for one
// roll more at a time (P. Gilmore and R. Gomory, "The theory and computation of knapsack
// functions", Operations Research 14, 1966). It takes the same time whatever the values are.
class CutGrid {
 public:
  // The best cut of at most `limit` rolls within `room` inches; kFitTolerance is part of the room.
  CutGrid(const std::vector<PricedWidth> &widths, double room, int limit);

  // How many additions best() takes; infinite where the widths have no unit.
  double work() const;

  struct Best {
    double value = 0;
    std::vector<std::size_t> rolls;  // the caller's indices
  };
  // REQUIRES a finite work().
  Best best() const;

 private:
  void findUnit(double room);
  // The worth of the best cut of at most so many rolls within every room, from that of one less.
  void addRoll(const double *fewer, double *more) const;

  const std::vector<PricedWidth> &widths_;
  std::size_t limit_;
  std::vector<std::size_t> units_;  // of each width; empty where there is no unit
  std::size_t rooms_ = 0;           // from 0 units to all
};

}  // namespace corvane::plan
