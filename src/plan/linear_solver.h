#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "plan/linear_model.h"

namespace corvane::plan {

enum class Method { kDual, kPrimal, kBarrier };

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

  // Seconds of processor time from now on for the following solves; 0: no limit.
  void setTimeLimit(double seconds);

  // Solves from the basis that there is. The barrier starts afresh, and crosses over to a vertex.
  LinearSolution solve(Method method);

  // Writes the model as it stands as MPS, with names for the columns; `whole` are those that must
  // be whole. False when the file cannot be written.
  bool writeMps(const std::string &path, const std::vector<std::string> &columnNames,
                const std::vector<int> &whole);

 private:
  struct Clp;
  std::unique_ptr<Clp> clp_;
};

}  // namespace corvane::plan
