#include "lp_recording.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "real_operations.h"
#include "resources.h"

namespace corvane::bench {

namespace {

constexpr double kInfinity = 1e20;
constexpr int kMinimise = 1;

void choose(const char *setting) {
  if (setting == nullptr) {
    unsetenv("CORVANE_LP_PLAIN");
  } else {
    setenv("CORVANE_LP_PLAIN", setting, 1);
  }
}

void require(bool holds) {
  if (!holds) {
    throw std::runtime_error("a recorded LP was not solved");
  }
}

}  // namespace

LpRecording::Columns LpRecording::columnsOf(int columns, int nonzeros, const double *objective,
                                            const int *starts, const int *indices,
                                            const double *values) {
  Columns batch;
  batch.objective.assign(objective, objective + columns);
  batch.starts.assign(starts, starts + columns);
  batch.indices.assign(indices, indices + nonzeros);
  batch.values.assign(values, values + nonzeros);
  return batch;
}

void LpRecording::load(bool isMaster, int columns, int rows, const double *objective,
                       const double *rhs, const int *starts, const int *counts, const int *indices,
                       const double *values) {
  const int nonzeros = columns == 0 ? 0 : starts[columns - 1] + counts[columns - 1];
  Problem problem{isMaster, std::vector<double>(rhs, rhs + rows), {}};
  problem.batches.push_back(columnsOf(columns, nonzeros, objective, starts, indices, values));
  problem.batches.back().counts.assign(counts, counts + columns);
  problems_.push_back(std::move(problem));
}

void LpRecording::add(int columns, int nonzeros, const double *objective, const int *starts,
                      const int *indices, const double *values) {
  problems_.back().batches.push_back(
      columnsOf(columns, nonzeros, objective, starts, indices, values));
}

void LpRecording::duals(const double *values, int rows) {
  duals_.emplace_back(values, values + rows);
}

double LpRecording::solveAgain(bool masters, const char *setting) const {
  choose(setting);
  const double begin = cpuSeconds();
  int status = 0;
  CPXENVptr env = __real_CPXopenCPLEXruntime(&status, 0, nullptr);
  for (const Problem &problem : problems_) {
    if (problem.isMaster != masters) {
      continue;
    }
    const int rows = static_cast<int>(problem.rhs.size());
    const std::vector<char> senses(problem.rhs.size(), 'G');
    CPXLPptr lp = __real_CPXcreateprob(env, &status, "again");
    int columns = 0;
    for (const Columns &batch : problem.batches) {
      const int added = static_cast<int>(batch.objective.size());
      const std::vector<double> lower(batch.objective.size(), 0.0);
      const std::vector<double> upper(batch.objective.size(), kInfinity);
      const int code =
          columns == 0
              ? __real_CPXcopylp(env, lp, added, rows, kMinimise, batch.objective.data(),
                                 problem.rhs.data(), senses.data(), batch.starts.data(),
                                 batch.counts.data(), batch.indices.data(), batch.values.data(),
                                 lower.data(), upper.data(), nullptr)
              : __real_CPXaddcols(env, lp, added, static_cast<int>(batch.values.size()),
                                  batch.objective.data(), batch.starts.data(), batch.indices.data(),
                                  batch.values.data(), lower.data(), upper.data(), nullptr);
      require(code == 0 && __real_CPXprimopt(env, lp) == 0);
      columns += added;
      std::vector<double> answer(static_cast<std::size_t>(std::max(columns, rows)));
      if (masters) {
        require(__real_CPXgetpi(env, lp, answer.data(), 0, rows - 1) == 0);
      } else {
        require(__real_CPXgetx(env, lp, answer.data(), 0, columns - 1) == 0 &&
                __real_CPXgetdj(env, lp, answer.data(), 0, columns - 1) == 0);
      }
    }
    __real_CPXfreeprob(env, &lp);
  }
  __real_CPXcloseCPLEX(&env);
  choose(nullptr);
  return cpuSeconds() - begin;
}

}  // namespace corvane::bench
