#pragma once

#include <limits>
#include <span>
#include <vector>

namespace corvane::plan {

inline constexpr double kInfinite = std::numeric_limits<double>::infinity();

struct Entry {
  int row = 0;
  double value = 0.0;
};

// A linear programme to be minimised, as plain data: columns with cost, bounds and whether they are
// whole, rows with bounds, the matrix by columns.
struct LinearModel {
  std::vector<double> cost;
  std::vector<double> lower;
  std::vector<double> upper;
  std::vector<char> whole;
  std::vector<double> rowLower;
  std::vector<double> rowUpper;
  std::vector<int> start{0};  // of column c: entries start[c] to start[c + 1] - 1
  std::vector<int> rowOf;
  std::vector<double> value;

  bool operator==(const LinearModel &other) const = default;

  int columns() const { return static_cast<int>(cost.size()); }
  int rows() const { return static_cast<int>(rowLower.size()); }

  // Each returns its number.
  int addRow(double low, double high);
  int addColumn(double columnCost, double low, double high, std::span<const Entry> entries);
};

enum class Method { kDual, kPrimal, kBarrier };

enum class Status { kOptimal, kInfeasible, kUnbounded, kStopped };

enum class Place : char { kLow, kHigh, kBasic };

// Which columns and rows are basic, and at which of their bounds the others are.
struct Basis {
  std::vector<Place> columns;
  std::vector<Place> rows;
};

struct LinearSolution {
  Status status = Status::kStopped;
  double objective = 0.0;
  std::vector<double> primal;       // by column
  std::vector<double> dual;         // by row: what one more of the right-hand side costs
  std::vector<double> reducedCost;  // by column
  int iterations = 0;
  Method method = Method::kDual;  // the one that ended the solve
};

}  // namespace corvane::plan
