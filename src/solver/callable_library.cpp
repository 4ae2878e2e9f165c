// The C interface: checks handles and ranges, keeps exceptions in, and passes on to the solver.

// The operations are all that the shared library shows.
#pragma GCC visibility push(default)
#include "solver/callable_library.h"
#pragma GCC visibility pop

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string_view>

#include "solver/environment.h"

namespace {

using corvane::lp::ColumnBatch;
using corvane::lp::Method;
using corvane::lp::objectiveValue;
using corvane::lp::Plain;
using corvane::lp::reducedCost;
using corvane::lp::RowBatch;
using corvane::lp::Solution;
using corvane::lp::Solver;
using corvane::lp::Status;

enum Code : int {
  kSuccess = 0,
  kOutOfMemory = 1,
  kBadArgument = 2,
  kNoProblem = 3,   // a null handle, or one of another environment
  kNotLoaded = 4,   // nothing to solve, since the last load failed
  kNoSolution = 5,  // nothing to read, since no solve ended at an optimum
  kInternal = 6,
};

// No exception may cross into C.
template <typename Operation>
int guarded(Operation operation) noexcept {
  try {
    return operation();
  } catch (const std::bad_alloc &) {
    return kOutOfMemory;
  } catch (...) {
    return kInternal;
  }
}

void setStatus(int *status, int code) {
  if (status != nullptr) {
    *status = code;
  }
}

bool belongs(CPXENVptr env, CPXLPptr lp) {
  return env != nullptr && lp != nullptr && lp->environment == env;
}

Plain modeOfProcess() {
  const char *value = std::getenv("CORVANE_LP_PLAIN");
  const std::string_view mode = value == nullptr ? "" : value;
  if (mode == "primal") {
    return Plain::kPrimal;
  }
  return mode == "dual" ? Plain::kDual : Plain::kOff;
}

int solve(CPXENVptr env, CPXLPptr lp, Method asked) {
  if (!belongs(env, lp)) {
    return kNoProblem;
  }
  return guarded([&]() -> int {
    lp->solution = Solution();
    if (!lp->loaded) {
      return kNotLoaded;
    }
    lp->solution = lp->solver.solve(lp->program, asked, env->known);
    return kSuccess;
  });
}

// What speeds up the next solve of the same matrix; running out of memory here only loses that.
void rememberMatrix(cpxenv &env, cpxlp &lp) {
  guarded([&]() -> int {
    lp.solver.remember(lp.program, lp.solution, env.known);
    return kSuccess;
  });
}

// Whether entries begin to end of `size` can be read from an optimal solution into `target`.
int readable(CPXENVptr env, CPXLPptr lp, const double *target, int begin, int end, int size) {
  if (!belongs(env, lp)) {
    return kNoProblem;
  }
  if (lp->solution.status != Status::kOptimal) {
    return kNoSolution;
  }
  return target == nullptr || begin < 0 || end < begin || end >= size ? kBadArgument : kSuccess;
}

// The solver minimises; no negative zeros.
double inCallersSense(const cpxlp &lp, double value) {
  return lp.program.objectiveSense() == 1 ? value : 0.0 - value;
}

}  // namespace

extern "C" {

CPXENVptr CPXopenCPLEXruntime(int *status, int /*serial*/, const char * /*licence*/) {
  CPXENVptr env = nullptr;
  setStatus(status, guarded([&]() -> int {
              env = new cpxenv(modeOfProcess());
              return kSuccess;
            }));
  return env;
}

int CPXcloseCPLEX(CPXENVptr *env) {
  if (env == nullptr || *env == nullptr) {
    return kNoProblem;
  }
  delete *env;
  *env = nullptr;
  return kSuccess;
}

CPXLPptr CPXcreateprob(CPXENVptr env, int *status, const char * /*name*/) {
  if (env == nullptr) {
    setStatus(status, kNoProblem);
    return nullptr;
  }
  CPXLPptr lp = nullptr;
  setStatus(status, guarded([&]() -> int {
              env->problems.push_back(std::make_unique<cpxlp>(*env, env->mode));
              lp = env->problems.back().get();
              return kSuccess;
            }));
  return lp;
}

int CPXcopylp(CPXENVptr env, CPXLPptr lp, int columns, int rows, int objectiveSense,
              const double *objective, const double *rhs, const char *senses, const int *matbeg,
              const int *matcnt, const int *matind, const double *matval, const double *lower,
              const double *upper, const double * /*ranges: no sense of ours has one*/) {
  if (!belongs(env, lp)) {
    return kNoProblem;
  }
  return guarded([&]() -> int {
    lp->loaded = false;
    lp->solution = Solution();
    lp->solver = Solver(env->mode);
    lp->program = {};
    ColumnBatch batch;
    batch.columns = columns;
    batch.costs = objective;
    batch.starts = matbeg;
    batch.counts = matcnt;
    batch.rows = matind;
    batch.values = matval;
    batch.lower = lower;
    batch.upper = upper;
    const bool counted = columns <= 0 || matcnt != nullptr;
    lp->loaded = counted && lp->program.setRows(RowBatch{rows, rhs, senses}, objectiveSense) &&
                 lp->program.addColumns(batch);
    return lp->loaded ? kSuccess : kBadArgument;
  });
}

int CPXaddcols(CPXENVptr env, CPXLPptr lp, int columns, int nonzeros, const double *objective,
               const int *matbeg, const int *matind, const double *matval, const double *lower,
               const double *upper, char ** /*names*/) {
  if (!belongs(env, lp)) {
    return kNoProblem;
  }
  if (!lp->loaded) {
    return kNotLoaded;
  }
  return guarded([&]() -> int {
    ColumnBatch batch;
    batch.columns = columns;
    batch.nonzeros = nonzeros;
    batch.costs = objective;
    batch.starts = matbeg;
    batch.rows = matind;
    batch.values = matval;
    batch.lower = lower;
    batch.upper = upper;
    return lp->program.addColumns(batch) ? kSuccess : kBadArgument;
  });
}

int CPXprimopt(CPXENVptr env, CPXLPptr lp) {
  return solve(env, lp, Method::kPrimal);
}

int CPXhybbaropt(CPXENVptr env, CPXLPptr lp, int /*method*/) {
  return solve(env, lp, Method::kBarrier);
}

int CPXgetstat(CPXENVptr env, CPXLPptr lp) {
  return static_cast<int>(belongs(env, lp) ? lp->solution.status : Status::kOther);
}

int CPXgetobjval(CPXENVptr env, CPXLPptr lp, double *value) {
  if (const int code = readable(env, lp, value, 0, 0, 1); code != kSuccess) {
    return code;
  }
  *value = inCallersSense(*lp, objectiveValue(lp->program, lp->solution.activities));
  return kSuccess;
}

int CPXgetx(CPXENVptr env, CPXLPptr lp, double *x, int begin, int end) {
  const int columns = lp == nullptr ? 0 : lp->program.columns();
  if (const int code = readable(env, lp, x, begin, end, columns); code != kSuccess) {
    return code;
  }
  std::fill(x, x + (end - begin) + 1, 0.0);
  for (const auto &[column, value] : lp->solution.activities) {
    if (column >= begin && column <= end) {
      x[column - begin] = value;
    }
  }
  return kSuccess;
}

int CPXgetpi(CPXENVptr env, CPXLPptr lp, double *pi, int begin, int end) {
  const int rows = lp == nullptr ? 0 : lp->program.rows();
  if (const int code = readable(env, lp, pi, begin, end, rows); code != kSuccess) {
    return code;
  }
  for (int i = begin; i <= end; ++i) {
    const double dual = lp->solution.duals[static_cast<std::size_t>(i)];
    pi[i - begin] = inCallersSense(*lp, dual);
  }
  return kSuccess;
}

int CPXgetdj(CPXENVptr env, CPXLPptr lp, double *dj, int begin, int end) {
  const int columns = lp == nullptr ? 0 : lp->program.columns();
  if (const int code = readable(env, lp, dj, begin, end, columns); code != kSuccess) {
    return code;
  }
  for (int j = begin; j <= end; ++j) {
    const double reduced = reducedCost(lp->program.pool(), j, lp->solution.duals.data());
    dj[j - begin] = inCallersSense(*lp, reduced);
  }
  return kSuccess;
}

int CPXfreeprob(CPXENVptr env, CPXLPptr *lp) {
  if (lp == nullptr || !belongs(env, *lp)) {
    return kNoProblem;
  }
  const auto found = std::find_if(env->problems.begin(), env->problems.end(),
                                  [&](const auto &problem) { return problem.get() == *lp; });
  if (found == env->problems.end()) {
    return kNoProblem;
  }
  rememberMatrix(*env, **found);
  env->problems.erase(found);
  *lp = nullptr;
  return kSuccess;
}

}  // extern "C"
