// The solver layer against CLP used plainly, on recorded column generations.
//
// Masters: what all solves of one grade's periods take, columns added in between. Finals: one LP
// for each period over all patterns, each loaded afresh and freed. The mode of each run: fast is
// the layer as it is, primal and dual are those of CORVANE_LP_PLAIN, barrier is the layer asked for
// barrier.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <map>
#include <string>
#include <tuple>

#include "../tests/solver/cutting_stock.h"

using namespace corvane;

namespace {

using corvane::lp::testing::CuttingStock;
using corvane::lp::testing::MasterRecord;
using corvane::lp::testing::MillRecord;
using corvane::lp::testing::MillShape;
using corvane::lp::testing::Problem;

enum Mode { kFast, kPrimal, kDual, kBarrier };

void setMode(Mode mode) {
  if (mode == kPrimal) {
    setenv("CORVANE_LP_PLAIN", "primal", 1);
  } else if (mode == kDual) {
    setenv("CORVANE_LP_PLAIN", "dual", 1);
  } else {
    unsetenv("CORVANE_LP_PLAIN");
  }
}

// Recorded once for each shape, by the layer as it is.
const MillRecord &recordOf(int widths, int patterns, int deckles, int periods) {
  static std::map<std::tuple<int, int, int, int>, MillRecord> records;
  const auto key = std::make_tuple(widths, patterns, deckles, periods);
  auto found = records.find(key);
  if (found == records.end()) {
    setMode(kFast);
    MillShape shape;
    shape.widths = widths;
    shape.patternsPerIteration = patterns;
    shape.deckles = deckles;
    shape.periods = periods;
    found = records.emplace(key, CuttingStock(shape).run()).first;
  }
  return found->second;
}

const MillRecord &recordOf(const benchmark::State &state) {
  return recordOf(static_cast<int>(state.range(1)), static_cast<int>(state.range(2)),
                  static_cast<int>(state.range(3)), static_cast<int>(state.range(4)));
}

void masters(benchmark::State &state) {
  const MillRecord &record = recordOf(state);
  const auto mode = static_cast<Mode>(state.range(0));
  setMode(mode);
  for (auto iteration : state) {
    CPXENVptr env = CPXopenCPLEXruntime(nullptr, 0, nullptr);
    for (const MasterRecord &master : record.masters) {
      Problem problem(env);
      problem.load(master.batches[0], master.rhs);
      for (std::size_t b = 0; b < master.batches.size(); ++b) {
        if (b > 0) {
          problem.add(master.batches[b]);
        }
        if (problem.solve(mode == kBarrier) != 1) {
          state.SkipWithError("a master LP has no optimum");
        }
        benchmark::DoNotOptimize(problem.duals().data());
      }
    }
    CPXcloseCPLEX(&env);
  }
}

void finals(benchmark::State &state) {
  const MillRecord &record = recordOf(state);
  const auto mode = static_cast<Mode>(state.range(0));
  setMode(mode);
  for (auto iteration : state) {
    CPXENVptr env = CPXopenCPLEXruntime(nullptr, 0, nullptr);
    for (const std::vector<double> &rhs : record.finalRhs) {
      Problem problem(env);
      problem.load(record.finalColumns, rhs);
      if (problem.solve(mode == kBarrier) != 1) {
        state.SkipWithError("a final LP has no optimum");
      }
      benchmark::DoNotOptimize(problem.reducedCosts().data());
      problem.free();
    }
    CPXcloseCPLEX(&env);
  }
}

void shapes(benchmark::internal::Benchmark *bench, const std::vector<Mode> &modes) {
  bench->ArgNames({"mode", "widths", "patterns", "deckles", "periods"});
  const std::vector<std::vector<int64_t>> mills = {
      {20, 100, 1, 6},  {60, 100, 1, 6},   {60, 1000, 1, 6},  {60, 1000, 3, 6}, {150, 100, 1, 3},
      {150, 100, 3, 3}, {150, 1000, 1, 3}, {150, 1000, 3, 3}, {400, 100, 1, 1}};
  for (const std::vector<int64_t> &mill : mills) {
    for (const Mode mode : modes) {
      bench->Args({mode, mill[0], mill[1], mill[2], mill[3]});
    }
  }
  bench->Unit(benchmark::kMillisecond);
}

// A cold dual for every solve of a master would measure what nobody does.
BENCHMARK(masters)->Apply([](auto *bench) { shapes(bench, {kFast, kPrimal, kBarrier}); });
BENCHMARK(finals)->Apply([](auto *bench) { shapes(bench, {kFast, kPrimal, kDual, kBarrier}); });

}  // namespace
