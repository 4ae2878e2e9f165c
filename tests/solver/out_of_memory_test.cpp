// Every allocation of a run fails once; then, from every fifth on, all of them. A code, never a
// crash.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <new>
#include <tuple>
#include <vector>

#include "solver/cutting_stock.h"

namespace {

long allocations = 0;
long failsAt = -1;     // the allocation that fails, -1 for none
bool failsOn = false;  // all later ones too

void *allocate(std::size_t size) {
  const long number = allocations++;
  if (failsAt >= 0 && (number == failsAt || (failsOn && number > failsAt))) {
    throw std::bad_alloc();
  }
  if (void *memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

// These replace the ones that the solver and CLP call, in the whole process.
void *operator new(std::size_t size) {
  return allocate(size);
}
void *operator new[](std::size_t size) {
  return allocate(size);
}
void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept {
  return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void *memory) noexcept {
  std::free(memory);
}
void operator delete[](void *memory) noexcept {
  std::free(memory);
}
void operator delete(void *memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
void operator delete[](void *memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

namespace corvane::lp::testing {
namespace {

// Arrays made beforehand: nothing of the test itself allocates while allocations fail.
struct PreparedLp {
  explicit PreparedLp(const Columns &from, std::vector<double> demand)
      : columns(from), counts(from.counts()), rhs(std::move(demand)), senses(rhs.size(), 'G') {}

  int load(CPXENVptr env, CPXLPptr lp) const {
    return CPXcopylp(env, lp, columns.size(), static_cast<int>(rhs.size()), 1, columns.cost.data(),
                     rhs.data(), senses.data(), columns.start.data(), counts.data(),
                     columns.row.data(), columns.value.data(), columns.lower.data(),
                     columns.upper.data(), nullptr);
  }

  Columns columns;
  std::vector<int> counts;
  std::vector<double> rhs;
  std::vector<char> senses;
};

struct PreparedRun {
  explicit PreparedRun(const MillRecord &record)
      : master(record.masters[0].batches[0], record.masters[0].rhs),
        batch(record.masters[0].batches[1]),
        finalLp(record.finalColumns, record.finalRhs[0]) {}

  PreparedLp master;
  Columns batch;
  PreparedLp finalLp;
};

bool isSolved(CPXENVptr env, CPXLPptr lp) {
  return CPXprimopt(env, lp) == 0 && CPXgetstat(env, lp) == 1;
}

// 0 when all went well, 1 when a code told of the failure, 2 when an answer is missing without one,
// or when the failed solve could not start afresh with the memory there is again.
int solve(CPXENVptr env, CPXLPptr lp) {
  if (CPXprimopt(env, lp) != 0) {
    return failsOn || isSolved(env, lp) ? 1 : 2;
  }
  return CPXgetstat(env, lp) == 1 ? 0 : 2;
}

// A failed load leaves nothing to solve, and says so.
int solveUnloaded(CPXENVptr env, CPXLPptr lp) {
  return CPXprimopt(env, lp) != 0 ? 1 : 2;
}

int runIn(CPXENVptr env, const PreparedRun &run) {
  CPXLPptr lp = CPXcreateprob(env, nullptr, "selectPatterns");
  if (lp == nullptr) {
    return 1;
  }
  if (run.master.load(env, lp) != 0) {
    return solveUnloaded(env, lp);
  }
  int worst = solve(env, lp);
  const Columns &batch = run.batch;
  if (CPXaddcols(env, lp, batch.size(), batch.entries(), batch.cost.data(), batch.start.data(),
                 batch.row.data(), batch.value.data(), batch.lower.data(), batch.upper.data(),
                 nullptr) != 0) {
    worst = std::max(worst, 1);
  }
  worst = std::max(worst, solve(env, lp));
  for (int period = 0; period < 2; ++period) {
    CPXLPptr finalLp = CPXcreateprob(env, nullptr, "selectPatterns");
    const bool loaded = finalLp != nullptr && run.finalLp.load(env, finalLp) == 0;
    worst = std::max(worst, loaded ? solve(env, finalLp) : solveUnloaded(env, finalLp));
    CPXfreeprob(env, &finalLp);
  }
  return worst;
}

int runOnce(const PreparedRun &run) {
  CPXENVptr env = CPXopenCPLEXruntime(nullptr, 0, nullptr);
  if (env == nullptr) {
    return 1;
  }
  const int worst = runIn(env, run);
  CPXcloseCPLEX(&env);
  return worst;
}

// The outcome in a process of its own, -1 for one that ended by a signal.
int outcomeWithFailure(const PreparedRun &run, long at, bool fromThereOn) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(20);
    allocations = 0;
    failsAt = at;
    failsOn = fromThereOn;
    const int outcome = runOnce(run);
    failsAt = -1;
    _exit(outcome);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Whether all later allocations fail too; and which of every kParts faults, so that processes can
// share them.
constexpr int kParts = 4;
class OutOfMemory : public ::testing::TestWithParam<std::tuple<bool, int>> {};

TEST_P(OutOfMemory, AtAnyAllocationIsTold) {
  const auto [fromThereOn, part] = GetParam();
  const MillShape shape{.widths = 7, .patternsPerIteration = 400};
  const MillRecord record = CuttingStock(shape).run();
  const PreparedRun run(record);
  allocations = 0;
  ASSERT_EQ(runOnce(run), 0);
  const long total = allocations;
  ASSERT_GT(total, 100);
  int told = 0;
  const long stride = fromThereOn ? 5 : 1;
  for (long at = part * stride; at < total; at += kParts * stride) {
    const int outcome = outcomeWithFailure(run, at, fromThereOn);
    EXPECT_TRUE(outcome == 0 || outcome == 1)
        << "allocation " << at << " of " << total << ": " << outcome;
    told += outcome;
  }
  EXPECT_GT(told, total / (kParts * stride) * 4 / 5) << "failures must be told, not swallowed";
}

INSTANTIATE_TEST_SUITE_P(OnceAndFromThereOn, OutOfMemory,
                         ::testing::Combine(::testing::Bool(), ::testing::Range(0, kParts)));

}  // namespace
}  // namespace corvane::lp::testing
