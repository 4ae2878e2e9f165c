#include "solver/linear_program.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvane::lp {

namespace {

// Coefficients below this size are zeros to CLP, and so to the pool.
constexpr double kTinyCoefficient = 1e-20;

// From here on a caller's numbers are infinite.
constexpr double kInfinite = 1e20;

double widen(double bound) {
  if (bound >= kInfinite) {
    return kInfinity;
  }
  return bound <= -kInfinite ? -kInfinity : bound;
}

bool isFinite(double value) {
  return std::fabs(value) < kInfinite;
}  // false for NaN

bool isLowerBound(double value) {
  return value < kInfinite;
}  // false for NaN
bool isUpperBound(double value) {
  return value > -kInfinite;
}  // false for NaN

double largerFinite(double known, double value) {
  return std::isinf(value) ? known : std::max(known, std::fabs(value));
}

int columnEnd(const ColumnBatch &batch, int column) {
  if (batch.counts != nullptr) {
    return batch.starts[column] + batch.counts[column];
  }
  return column + 1 < batch.columns ? batch.starts[column + 1] : batch.nonzeros;
}

// Starts and counts point into the arrays and their sums stay within 32 bits.
bool extentsAreValid(const ColumnBatch &batch, std::size_t held) {
  std::size_t total = held;
  for (int j = 0; j < batch.columns; ++j) {
    const int begin = batch.starts[j];
    if (begin < 0) {
      return false;
    }
    if (batch.counts != nullptr) {
      if (batch.counts[j] < 0 || batch.counts[j] > std::numeric_limits<int>::max() - begin) {
        return false;
      }
    } else if (columnEnd(batch, j) < begin || columnEnd(batch, j) > batch.nonzeros) {
      return false;
    }
    total += static_cast<std::size_t>(columnEnd(batch, j) - begin);
  }
  return total <= static_cast<std::size_t>(std::numeric_limits<int>::max());
}

// Every entry is a number in an existing row, and no row comes twice in a column.
bool entriesAreValid(const ColumnBatch &batch, int rows) {
  std::vector<int> lastColumn(static_cast<std::size_t>(rows), -1);
  for (int j = 0; j < batch.columns; ++j) {
    for (int k = batch.starts[j]; k < columnEnd(batch, j); ++k) {
      if (batch.rows[k] < 0 || batch.rows[k] >= rows || !isFinite(batch.values[k])) {
        return false;
      }
      int &seen = lastColumn[static_cast<std::size_t>(batch.rows[k])];
      if (seen == j) {
        return false;
      }
      seen = j;
    }
  }
  return true;
}

// Room for that many columns and entries; at least doubles, so that many small batches cost no more
// than one large one.
void reserve(ColumnPool &pool, std::size_t columns, std::size_t entries) {
  const auto grow = [](auto &array, std::size_t size) {
    if (size > array.capacity()) {
      array.reserve(std::max(size, 2 * array.capacity()));
    }
  };
  grow(pool.cost, columns);
  grow(pool.lower, columns);
  grow(pool.upper, columns);
  grow(pool.start, columns + 1);
  grow(pool.row, entries);
  grow(pool.value, entries);
}

bool hasEntries(const ColumnBatch &batch) {
  for (int j = 0; j < batch.columns; ++j) {
    if (columnEnd(batch, j) > batch.starts[j]) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool LinearProgram::setRows(const RowBatch &batch, int objectiveSense) {
  if (batch.rows < 0 || (objectiveSense != 1 && objectiveSense != -1) ||
      (batch.rows > 0 && (batch.rhs == nullptr || batch.senses == nullptr))) {
    return false;
  }
  std::vector<double> lower;
  std::vector<double> upper;
  bool covering = true;
  double demand = 0.0;
  double largest = 0.0;
  for (int i = 0; i < batch.rows; ++i) {
    const char sense = batch.senses[i];
    if (std::isnan(batch.rhs[i]) || (sense != 'G' && sense != 'L' && sense != 'E')) {
      return false;
    }
    const double rhs = widen(batch.rhs[i]);
    lower.push_back(sense == 'L' ? -kInfinity : rhs);
    upper.push_back(sense == 'G' ? kInfinity : rhs);
    covering = covering && sense == 'G';
    demand = sense == 'L' || rhs < 0.0 ? demand : largerFinite(demand, rhs);
    largest = largerFinite(largest, rhs);
  }
  rowLower_ = std::move(lower);
  rowUpper_ = std::move(upper);
  objectiveSense_ = objectiveSense;
  coveringRows_ = covering;
  coveringColumns_ = true;
  pool_ = ColumnPool();
  largestCost_ = 0.0;
  largestDemand_ = demand;
  largestBound_ = largest;
  return true;
}

bool LinearProgram::batchIsValid(const ColumnBatch &batch) const {
  if (batch.columns < 0 || batch.nonzeros < 0) {
    return false;
  }
  if (batch.columns == 0) {
    return true;
  }
  if (batch.costs == nullptr || batch.starts == nullptr || batch.lower == nullptr ||
      batch.upper == nullptr || !extentsAreValid(batch, pool_.row.size())) {
    return false;
  }
  for (int j = 0; j < batch.columns; ++j) {
    if (!isFinite(batch.costs[j]) || !isLowerBound(batch.lower[j]) ||
        !isUpperBound(batch.upper[j])) {
      return false;
    }
  }
  if (!hasEntries(batch)) {
    return true;
  }
  return batch.rows != nullptr && batch.values != nullptr && entriesAreValid(batch, rows());
}

void LinearProgram::appendColumn(const ColumnBatch &batch, int column) {
  const double cost = objectiveSense_ == 1 ? batch.costs[column] : 0.0 - batch.costs[column];
  const double lower = widen(batch.lower[column]);
  const double upper = widen(batch.upper[column]);
  bool covering = cost >= 0.0 && lower == 0.0 && upper == kInfinity;
  pool_.cost.push_back(cost);
  pool_.lower.push_back(lower);
  pool_.upper.push_back(upper);
  for (int k = batch.starts[column]; k < columnEnd(batch, column); ++k) {
    if (std::fabs(batch.values[k]) < kTinyCoefficient) {
      continue;
    }
    pool_.row.push_back(batch.rows[k]);
    pool_.value.push_back(batch.values[k]);
    covering = covering && batch.values[k] > 0.0;
  }
  pool_.start.push_back(static_cast<int>(pool_.row.size()));
  coveringColumns_ = coveringColumns_ && covering;
  largestCost_ = std::max(largestCost_, std::fabs(cost));
  largestBound_ = largerFinite(largerFinite(largestBound_, lower), upper);
}

bool LinearProgram::addColumns(const ColumnBatch &batch) {
  if (!batchIsValid(batch)) {
    return false;
  }
  std::size_t entries = pool_.row.size();
  for (int j = 0; j < batch.columns; ++j) {
    entries += static_cast<std::size_t>(columnEnd(batch, j) - batch.starts[j]);
  }
  // All memory first, so that running out of it leaves the columns as they were.
  reserve(pool_, pool_.cost.size() + static_cast<std::size_t>(batch.columns), entries);
  for (int j = 0; j < batch.columns; ++j) {
    appendColumn(batch, j);
  }
  return true;
}

}  // namespace corvane::lp
