#include "scripted_lp_simplex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace scripted_lp {
namespace {

constexpr double kTolerance = 1e-9;       // relative to the largest cost or right-hand side
constexpr double kPivotTolerance = 1e-9;  // entries below it are taken as zero
constexpr double kInfiniteBound = 1e20;
constexpr int kRefactorInterval = 50;
constexpr int kDegenerateLimit = 30;  // degenerate pivots in a row before Bland's rule
constexpr long kPivotLimit = 20000;
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

double LargestMagnitude(const std::vector<double> &values) {
  double largest = 0.0;
  for (const double value : values) {
    largest = std::max(largest, std::fabs(value));
  }
  return largest;
}

bool IsFinite(const Column &column) {
  return std::isfinite(column.cost) && std::all_of(column.values.begin(), column.values.end(),
                                                   [](double v) { return std::isfinite(v); });
}

bool IsSupported(const Lp &lp) {
  const auto standard = [](const Column &c) {
    return c.lower == 0.0 && c.upper >= kInfiniteBound && IsFinite(c);
  };
  const auto known = [](char sense) { return sense == 'G' || sense == 'L' || sense == 'E'; };
  return lp.objective_sense == 1 && !lp.ranged &&
         std::all_of(lp.columns.begin(), lp.columns.end(), standard) &&
         std::all_of(lp.senses.begin(), lp.senses.end(), known) &&
         std::all_of(lp.rhs.begin(), lp.rhs.end(), [](double v) { return std::isfinite(v); });
}

// Columns are the LP's own, then one slack for each G and L row, then one artificial a row.
class Simplex {
 public:
  explicit Simplex(const Lp &lp);
  Solution Run();

 private:
  enum class Outcome { kDone, kUnbounded, kFailed };

  void AddUnitColumn(std::size_t row, double value);
  bool NeedsPhaseOne() const;
  Outcome Minimise(const std::vector<double> &costs);
  std::vector<double> DualValues(const std::vector<double> &costs) const;
  double ReducedCost(std::size_t j, const std::vector<double> &costs,
                     const std::vector<double> &duals) const;
  std::size_t Entering(const std::vector<double> &costs, double tolerance) const;
  std::vector<double> Direction(std::size_t j) const;
  std::size_t Leaving(const std::vector<double> &direction) const;
  bool Precedes(std::size_t row, std::size_t other, const std::vector<double> &direction) const;
  void Pivot(std::size_t row, std::size_t entering, const std::vector<double> &direction);
  void EliminateRow(std::size_t pivot_row, std::size_t row, double factor);
  bool Refactor();
  bool InvertInto(std::vector<double> &basis_matrix);
  void ComputeValues();
  Solution Extract() const;

  double &Inverse(std::size_t i, std::size_t j) { return inverse_[i * rows_ + j]; }
  double Inverse(std::size_t i, std::size_t j) const { return inverse_[i * rows_ + j]; }

  const Lp &lp_;
  std::size_t rows_;
  std::size_t artificial_begin_ = 0;
  std::vector<Column> columns_;
  std::vector<double> costs_;
  std::vector<std::size_t> basis_;
  std::vector<char> is_basic_;
  std::vector<double> inverse_;
  std::vector<double> values_;  // of the basic columns
  double rhs_tolerance_;
  bool artificials_leave_ = false;  // phase two: basic artificials are zero and must stay so
  bool bland_ = false;
};

Simplex::Simplex(const Lp &lp)
    : lp_(lp),
      rows_(lp.rhs.size()),
      columns_(lp.columns),
      basis_(rows_, kNone),
      rhs_tolerance_(kTolerance * LargestMagnitude(lp.rhs)) {
  for (std::size_t i = 0; i < rows_; ++i) {
    if (lp.senses[i] == 'E') {
      continue;
    }
    const bool at_most = lp.senses[i] == 'L';
    if (at_most ? lp.rhs[i] >= 0.0 : lp.rhs[i] <= 0.0) {
      basis_[i] = columns_.size();
    }
    AddUnitColumn(i, at_most ? 1.0 : -1.0);
  }
  artificial_begin_ = columns_.size();
  for (std::size_t i = 0; i < rows_; ++i) {
    if (basis_[i] == kNone) {
      basis_[i] = columns_.size();
    }
    AddUnitColumn(i, lp.rhs[i] < 0.0 ? -1.0 : 1.0);
  }
  is_basic_.assign(columns_.size(), 0);
  for (const std::size_t j : basis_) {
    is_basic_[j] = 1;
  }
  for (const Column &column : columns_) {
    costs_.push_back(column.cost);
  }
}

void Simplex::AddUnitColumn(std::size_t row, double value) {
  Column column;
  column.rows.push_back(static_cast<int>(row));
  column.values.push_back(value);
  columns_.push_back(std::move(column));
}

bool Simplex::NeedsPhaseOne() const {
  return std::any_of(basis_.begin(), basis_.end(),
                     [this](std::size_t j) { return j >= artificial_begin_; });
}

Solution Simplex::Run() {
  Solution solution;
  solution.status = kOther;
  if (!Refactor()) {
    return solution;
  }
  if (NeedsPhaseOne()) {
    std::vector<double> phase_one(columns_.size(), 0.0);
    std::fill(phase_one.begin() + static_cast<std::ptrdiff_t>(artificial_begin_), phase_one.end(),
              1.0);
    if (Minimise(phase_one) != Outcome::kDone) {
      return solution;
    }
    for (std::size_t i = 0; i < rows_; ++i) {
      if (basis_[i] >= artificial_begin_ && values_[i] > rhs_tolerance_) {
        solution.status = kInfeasible;
        return solution;
      }
    }
  }
  artificials_leave_ = true;
  const Outcome outcome = Minimise(costs_);
  if (outcome == Outcome::kUnbounded) {
    solution.status = kUnbounded;
  }
  return outcome == Outcome::kDone ? Extract() : solution;
}

Simplex::Outcome Simplex::Minimise(const std::vector<double> &costs) {
  const double tolerance = kTolerance * LargestMagnitude(costs);
  int degenerate = 0;
  for (long pivots = 0; pivots < kPivotLimit; ++pivots) {
    if (pivots % kRefactorInterval == 0 && !Refactor()) {
      return Outcome::kFailed;
    }
    bland_ = degenerate >= kDegenerateLimit;
    const std::size_t entering = Entering(costs, tolerance);
    if (entering == kNone) {
      return Refactor() ? Outcome::kDone : Outcome::kFailed;
    }
    const std::vector<double> direction = Direction(entering);
    const std::size_t leaving = Leaving(direction);
    if (leaving == kNone) {
      return Outcome::kUnbounded;
    }
    degenerate = values_[leaving] > rhs_tolerance_ ? 0 : degenerate + 1;
    Pivot(leaving, entering, direction);
  }
  return Outcome::kFailed;
}

std::vector<double> Simplex::DualValues(const std::vector<double> &costs) const {
  std::vector<double> duals(rows_, 0.0);
  for (std::size_t i = 0; i < rows_; ++i) {
    const double cost = costs[basis_[i]];
    if (cost == 0.0) {
      continue;
    }
    for (std::size_t j = 0; j < rows_; ++j) {
      duals[j] += cost * Inverse(i, j);
    }
  }
  return duals;
}

double Simplex::ReducedCost(std::size_t j, const std::vector<double> &costs,
                            const std::vector<double> &duals) const {
  double cost = costs[j];
  const Column &column = columns_[j];
  for (std::size_t k = 0; k < column.rows.size(); ++k) {
    cost -= duals[static_cast<std::size_t>(column.rows[k])] * column.values[k];
  }
  return cost;
}

// The column of the most negative reduced cost, the first of equals; under Bland's rule the first
// negative one. Artificials never come back.
std::size_t Simplex::Entering(const std::vector<double> &costs, double tolerance) const {
  const std::vector<double> duals = DualValues(costs);
  std::size_t best = kNone;
  double best_cost = -tolerance;
  for (std::size_t j = 0; j < artificial_begin_; ++j) {
    if (is_basic_[j] != 0) {
      continue;
    }
    const double cost = ReducedCost(j, costs, duals);
    if (cost < best_cost) {
      best = j;
      best_cost = cost;
      if (bland_) {
        break;
      }
    }
  }
  return best;
}

std::vector<double> Simplex::Direction(std::size_t j) const {
  std::vector<double> direction(rows_, 0.0);
  const Column &column = columns_[j];
  for (std::size_t k = 0; k < column.rows.size(); ++k) {
    const auto row = static_cast<std::size_t>(column.rows[k]);
    for (std::size_t i = 0; i < rows_; ++i) {
      direction[i] += Inverse(i, row) * column.values[k];
    }
  }
  return direction;
}

// Among rows of one ratio: the largest pivot for the sake of accuracy, or the column of the lowest
// number for Bland's rule.
bool Simplex::Precedes(std::size_t row, std::size_t other,
                       const std::vector<double> &direction) const {
  return bland_ ? basis_[row] < basis_[other]
                : std::fabs(direction[row]) > std::fabs(direction[other]);
}

std::size_t Simplex::Leaving(const std::vector<double> &direction) const {
  std::size_t leaving = kNone;
  double least = 0.0;
  for (std::size_t i = 0; i < rows_; ++i) {
    const bool held_at_zero = artificials_leave_ && basis_[i] >= artificial_begin_;
    const bool limits = direction[i] > kPivotTolerance ||
                        (held_at_zero && std::fabs(direction[i]) > kPivotTolerance);
    if (!limits) {
      continue;
    }
    const double ratio = held_at_zero ? 0.0 : std::max(values_[i], 0.0) / direction[i];
    if (leaving == kNone || ratio < least || (ratio == least && Precedes(i, leaving, direction))) {
      leaving = i;
      least = ratio;
    }
  }
  return leaving;
}

void Simplex::EliminateRow(std::size_t pivot_row, std::size_t row, double factor) {
  for (std::size_t j = 0; j < rows_; ++j) {
    Inverse(row, j) -= factor * Inverse(pivot_row, j);
  }
}

void Simplex::Pivot(std::size_t row, std::size_t entering, const std::vector<double> &direction) {
  const double pivot = direction[row];
  for (std::size_t j = 0; j < rows_; ++j) {
    Inverse(row, j) /= pivot;
  }
  for (std::size_t i = 0; i < rows_; ++i) {
    if (i != row && direction[i] != 0.0) {
      EliminateRow(row, i, direction[i]);
    }
  }
  is_basic_[basis_[row]] = 0;
  is_basic_[entering] = 1;
  basis_[row] = entering;
  ComputeValues();
}

void Simplex::ComputeValues() {
  values_.assign(rows_, 0.0);
  for (std::size_t i = 0; i < rows_; ++i) {
    for (std::size_t j = 0; j < rows_; ++j) {
      values_[i] += Inverse(i, j) * lp_.rhs[j];
    }
  }
}

bool Simplex::Refactor() {
  std::vector<double> matrix(rows_ * rows_, 0.0);
  for (std::size_t k = 0; k < rows_; ++k) {
    const Column &column = columns_[basis_[k]];
    for (std::size_t n = 0; n < column.rows.size(); ++n) {
      matrix[static_cast<std::size_t>(column.rows[n]) * rows_ + k] += column.values[n];
    }
  }
  inverse_.assign(rows_ * rows_, 0.0);
  for (std::size_t i = 0; i < rows_; ++i) {
    Inverse(i, i) = 1.0;
  }
  if (!InvertInto(matrix)) {
    return false;
  }
  ComputeValues();
  return true;
}

// Gauss-Jordan elimination with partial pivoting; what turns the matrix into the unit matrix turns
// inverse_, the unit matrix at first, into the inverse.
bool Simplex::InvertInto(std::vector<double> &matrix) {
  const auto at = [&](std::size_t i, std::size_t j) -> double & { return matrix[i * rows_ + j]; };
  for (std::size_t k = 0; k < rows_; ++k) {
    std::size_t best = k;
    for (std::size_t i = k + 1; i < rows_; ++i) {
      best = std::fabs(at(i, k)) > std::fabs(at(best, k)) ? i : best;
    }
    const double pivot = at(best, k);
    if (!(std::fabs(pivot) > kPivotTolerance)) {
      return false;
    }
    for (std::size_t j = 0; j < rows_; ++j) {
      std::swap(at(k, j), at(best, j));
      std::swap(Inverse(k, j), Inverse(best, j));
      at(k, j) /= pivot;
      Inverse(k, j) /= pivot;
    }
    for (std::size_t i = 0; i < rows_; ++i) {
      const double factor = at(i, k);
      if (i == k || factor == 0.0) {
        continue;
      }
      for (std::size_t j = 0; j < rows_; ++j) {
        at(i, j) -= factor * at(k, j);
      }
      EliminateRow(k, i, factor);
    }
  }
  return true;
}

// A dual value or activity that only rounding put on the wrong side of zero, or beside it, is zero.
Solution Simplex::Extract() const {
  Solution solution;
  solution.status = kOptimal;
  solution.pi = DualValues(costs_);
  for (std::size_t i = 0; i < rows_; ++i) {
    const bool wrong_side = (lp_.senses[i] == 'G' && solution.pi[i] <= 0.0) ||
                            (lp_.senses[i] == 'L' && solution.pi[i] >= 0.0);
    solution.pi[i] = wrong_side ? 0.0 : solution.pi[i];
  }
  solution.x.assign(lp_.columns.size(), 0.0);
  for (std::size_t i = 0; i < rows_; ++i) {
    if (basis_[i] < lp_.columns.size() && values_[i] > rhs_tolerance_) {
      solution.x[basis_[i]] = values_[i];
    }
  }
  for (std::size_t j = 0; j < lp_.columns.size(); ++j) {
    solution.objective += lp_.columns[j].cost * solution.x[j];
    solution.dj.push_back(is_basic_[j] != 0 ? 0.0 : ReducedCost(j, costs_, solution.pi));
  }
  return solution;
}

}  // namespace

Solution Solve(const Lp &lp) {
  if (!IsSupported(lp)) {
    Solution solution;
    solution.status = kOther;
    return solution;
  }
  return Simplex(lp).Run();
}

}  // namespace scripted_lp
