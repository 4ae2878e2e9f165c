#pragma once

// What a test LP and an answer of the callable library are inside the solver.

#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/test_lp.h"

namespace corvane::lp::testing {

inline LinearProgram programOf(const TestLp &lp) {
  const SparseColumns sparse(lp, 0, lp.columns());
  ColumnBatch batch;
  batch.columns = lp.columns();
  batch.costs = lp.cost.data();
  batch.starts = sparse.start.data();
  batch.counts = sparse.count.data();
  batch.rows = sparse.row.data();
  batch.values = sparse.value.data();
  batch.lower = lp.lower.data();
  batch.upper = lp.upper.data();
  LinearProgram program;
  if (!program.setRows({lp.rows(), lp.rhs.data(), lp.senses.data()}, lp.objectiveSense) ||
      !program.addColumns(batch)) {
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
