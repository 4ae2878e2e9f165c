#pragma once

// What a test LP and an answer of the callable library are inside the solver.

#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/test_lp.h"

namespace corvane::lp::testing {

// The columns of a ColumnPool, or of whatever holds arrays of those names without gaps, where they
// stand.
template <typename Arrays>
ColumnBatch batchOf(const Arrays &columns) {
  ColumnBatch batch;
  batch.columns = static_cast<int>(columns.cost.size());
  batch.nonzeros = static_cast<int>(columns.row.size());
  batch.costs = columns.cost.data();
  batch.starts = columns.start.data();
  batch.rows = columns.row.data();
  batch.values = columns.value.data();
  batch.lower = columns.lower.data();
  batch.upper = columns.upper.data();
  return batch;
}

// Appends the columns of `lp` from `begin` on; false when one is refused.
[[nodiscard]] inline bool append(LinearProgram &program, const TestLp &lp, int begin = 0) {
  const SparseColumns sparse(lp, begin, lp.columns());
  const ColumnPool pool{.cost = {lp.cost.begin() + begin, lp.cost.end()},
                        .lower = {lp.lower.begin() + begin, lp.lower.end()},
                        .upper = {lp.upper.begin() + begin, lp.upper.end()},
                        .start = sparse.start,
                        .row = sparse.row,
                        .value = sparse.value};
  return program.addColumns(batchOf(pool));
}

inline LinearProgram programOf(const TestLp &lp) {
  LinearProgram program;
  if (!program.setRows({lp.rows(), lp.rhs.data(), lp.senses.data()}, lp.objectiveSense) ||
      !append(program, lp)) {
    return {};
  }
  return program;
}

inline Solution solutionOf(const TestLp &lp, const TestAnswer &given) {
  Solution answer;
  answer.status = static_cast<Status>(given.status);
  for (std::size_t j = 0; j < given.x.size(); ++j) {
    if (given.x[j] != 0.0) {
      answer.activities.emplace_back(static_cast<int>(j), given.x[j]);
    }
  }
  for (const double pi : given.pi) {
    answer.duals.push_back(lp.objectiveSense * pi);
  }
  return answer;
}

}  // namespace corvane::lp::testing
