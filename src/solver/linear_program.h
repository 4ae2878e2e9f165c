#pragma once

// A linear program in minimisation form, held in arrays of our own:
//
//   minimise c'x  subject to  rowLower <= A x <= rowUpper,  lower <= x <= upper
//
// Columns live in a pool that only grows. Everything a solve needs beyond CLP (pricing, reduced
// costs, checks) is read from here, so that CLP may hold any subset of the columns.

#include <limits>
#include <utility>
#include <vector>

namespace corvane::lp {

// What a caller's bounds and right-hand sides of 1e20 and beyond are; costs and coefficients must
// stay below that.
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Columns as a caller hands them over; nothing is owned. Column j has its entries in
// [starts[j], starts[j] + counts[j]) or, without counts, up to the start of the next column, the
// last one up to `nonzeros`.
struct ColumnBatch {
  int columns = 0;
  int nonzeros = 0;
  const double *costs = nullptr;
  const int *starts = nullptr;
  const int *counts = nullptr;
  const int *rows = nullptr;
  const double *values = nullptr;
  const double *lower = nullptr;
  const double *upper = nullptr;
};

// The columns, in flat arrays. start has one entry more than there are columns.
struct ColumnPool {
  std::vector<double> cost;
  std::vector<double> lower;
  std::vector<double> upper;
  std::vector<int> start = {0};
  std::vector<int> row;
  std::vector<double> value;

  int size() const { return static_cast<int>(cost.size()); }
  bool operator==(const ColumnPool &) const = default;
};

// Right-hand sides as the caller gives them.
struct RowBatch {
  int rows = 0;
  const double *rhs = nullptr;
  const char *senses = nullptr;  // 'G', 'L' or 'E'
};

class LinearProgram {
 public:
  LinearProgram() = default;

  // Takes the rows and an objective sense: 1 minimises, -1 maximises, which turns every cost that
  // comes in. Returns false, and changes nothing, when a right-hand side is not a number or a
  // sense is unknown.
  bool setRows(const RowBatch &batch, int objectiveSense);

  // Appends the columns. Returns false, and changes nothing, when an array is missing, a number is
  // no number, a cost or coefficient is infinite, a bound is infinite on the wrong side, a row
  // does not exist or appears twice in a column, or the entries outgrow 32 bits. May throw
  // std::bad_alloc, which changes nothing either.
  bool addColumns(const ColumnBatch &batch);

  int rows() const { return static_cast<int>(rowLower_.size()); }
  int columns() const { return pool_.size(); }
  const ColumnPool &pool() const { return pool_; }
  const std::vector<double> &rowLower() const { return rowLower_; }
  const std::vector<double> &rowUpper() const { return rowUpper_; }
  int objectiveSense() const { return objectiveSense_; }

  // Moves the columns out; the program is of no further use.
  ColumnPool releasePool() { return std::move(pool_); }

  // True when all rows are >=, all columns run from 0 to infinity, and neither a cost nor a
  // coefficient is negative: the covering LPs of pattern generation.
  bool isCovering() const { return coveringRows_ && coveringColumns_; }

  // The largest |cost|.
  double largestCost() const { return largestCost_; }

  // The size that activities have: the largest positive finite right-hand side of a row that
  // demands (>= or =), or, where none does, the largest finite |right-hand side or bound|. Large
  // bounds beside real demands say nothing about sizes.
  double largestDemand() const { return largestDemand_ > 0.0 ? largestDemand_ : largestBound_; }

 private:
  bool batchIsValid(const ColumnBatch &batch) const;
  void appendColumn(const ColumnBatch &batch, int column);

  int objectiveSense_ = 1;
  std::vector<double> rowLower_;
  std::vector<double> rowUpper_;
  ColumnPool pool_;
  bool coveringRows_ = true;
  bool coveringColumns_ = true;
  double largestCost_ = 0.0;
  double largestDemand_ = 0.0;
  double largestBound_ = 0.0;
};

// c_j - A_j'y for one column.
inline double reducedCost(const ColumnPool &pool, int column, const double *duals) {
  const auto j = static_cast<std::size_t>(column);
  double result = pool.cost[j];
  const auto end = static_cast<std::size_t>(pool.start[j + 1]);
  for (auto k = static_cast<std::size_t>(pool.start[j]); k < end; ++k) {
    result -= pool.value[k] * duals[pool.row[k]];
  }
  return result;
}

}  // namespace corvane::lp
