#pragma once

#include <cstddef>
#include <vector>

namespace corvane::bench {

// The LPs that a run handed to the solver, to be solved again by other means.
class LpRecording {
 public:
  // A new LP: a master, or a final LP.
  void load(bool isMaster, int columns, int rows, const double *objective, const double *rhs,
            const int *starts, const int *counts, const int *indices, const double *values);
  // Columns that the last one gained before it was solved again.
  void add(int columns, int nonzeros, const double *objective, const int *starts,
           const int *indices, const double *values);

  // What was read of the last one.
  void duals(const double *values, int rows);

  // The dual values of every master in turn.
  const std::vector<std::vector<double>> &duals() const { return duals_; }

  // The seconds of processor time that all masters, or all final LPs, take: loading, adding
  // columns, solving and reading. setting is the value of CORVANE_LP_PLAIN, or null for none.
  double solveAgain(bool masters, const char *setting) const;

 private:
  struct Columns {
    std::vector<double> objective;
    std::vector<int> starts;
    std::vector<int> counts;
    std::vector<int> indices;
    std::vector<double> values;
  };
  struct Problem {
    bool isMaster;
    std::vector<double> rhs;
    // The first are those that it was loaded with; it is solved after each.
    std::vector<Columns> batches;
  };

  static Columns columnsOf(int columns, int nonzeros, const double *objective, const int *starts,
                           const int *indices, const double *values);

  std::vector<Problem> problems_;
  std::vector<std::vector<double>> duals_;
};

}  // namespace corvane::bench
