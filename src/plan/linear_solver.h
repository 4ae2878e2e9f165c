#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "plan/linear_model.h"

namespace corvane::plan {

// Pivots of the dual simplex, for each row, after which the barrier takes over. Where machines are
// full and patterns hold many rolls the dual simplex pivots on and on: of linear programmes that
// took it 2 to 4 pivots a row the barrier took up to six times as long, of those that took it 12 or
// 14 an eighth and two fifths (docs/performance.md).
inline constexpr int kDualPivotsARow = 5;

// CLP with one model in it, kept warm between calls. The same calls give the same numbers.
class LinearSolver {
 public:
  explicit LinearSolver(const LinearModel &model);
  ~LinearSolver();
  LinearSolver(const LinearSolver &) = delete;
  LinearSolver &operator=(const LinearSolver &) = delete;

  void setCost(int column, double cost);
  void setColumnBounds(int column, double low, double high);
  void setRowBounds(int row, double low, double high);
  int addRow(double low, double high, std::span<const int> columns, std::span<const double> values);
  // The columns of the model from `first` on, which are not in the solver yet.
  void addColumns(const LinearModel &model, int first);

  // The basis of the last solve.
  Basis basis() const;
  // The basis that solve() begins from. Columns that it does not have are at their lower bounds.
  // REQUIRES a place for each row.
  void setBasis(const Basis &basis);

  // Seconds of processor time from now on for the following solves; 0: no limit.
  void setTimeLimit(double seconds);

  // Solves from the basis that there is. The barrier starts afresh, and crosses over to a vertex.
  LinearSolution solve(Method method);
  // The same, and stopped after so many pivots a row.
  LinearSolution solve(Method method, int pivotsARow);

  // Solves afresh, whatever the basis: by the dual simplex, and by the barrier where that has not
  // ended after so many pivots a row.
  LinearSolution solveAfresh(int dualPivotsARow = kDualPivotsARow);

  // The solution held to a hundredth of the solver's tolerance, where it leaves more of a bound or
  // a row than that. REQUIRES an optimal solve before; as it was where it cannot be had.
  LinearSolution polish(const LinearSolution &solution);

  // Writes the model as it stands as MPS, with names for the columns; `whole` are those that must
  // be whole. False when the file cannot be written.
  bool writeMps(const std::string &path, const std::vector<std::string> &columnNames,
                const std::vector<int> &whole);

 private:
  struct Clp;
  std::unique_ptr<Clp> clp_;
};

}  // namespace corvane::plan
