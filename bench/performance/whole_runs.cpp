// The program against a plain run, over mills of every size.

#include <algorithm>
#include <functional>
#include <list>
#include <vector>

#include "measurements.h"
#include "mill_sizes.h"
#include "report_sections.h"
#include "samples.h"
#include "table.h"

namespace corvane::bench {

namespace {

// The two runs of a mill find other patterns, and small mills are solved in few steps: one mill
// would tell as much of its luck as of the program.
constexpr int kSmallWidths = 60;
constexpr std::uint32_t kSmallMills = 3;

double outsideSolver(const RunResult &run) {
  return 1 - (run[Phase::kMasterSolver] + run[Phase::kFinalSolver]) / run.total();
}

double medianOf(const std::vector<RunResult> &runs,
                const std::function<double(const RunResult &)> &value) {
  Samples samples;
  for (const RunResult &run : runs) {
    samples.add(value(run));
  }
  return samples.median();
}

// The mills of one size and shape, whose runs count together.
std::list<Mill> millsOf(const Size &size, const Extent &extent, int widthsInPattern,
                        const std::filesystem::path &folder) {
  std::list<Mill> mills;
  const std::uint32_t count = size.widths <= kSmallWidths ? kSmallMills : 1;
  for (std::uint32_t seed = 1; seed <= count; ++seed) {
    MillShape shape = millOf(size, extent);
    shape.widthsInPattern = widthsInPattern;
    shape.seed = seed;
    mills.emplace_back(shape, folder);
  }
  return mills;
}

RunResult runAll(const std::list<Mill> &mills, RunResult (*measure)(const Mill &)) {
  RunResult sum;
  for (const Mill &mill : mills) {
    sum.addTimes(measure(mill));
  }
  return sum;
}

// The program and the plain run in turns, one pair a repeat.
struct Comparison {
  std::vector<RunResult> program;
  std::vector<RunResult> plain;

  void add(const std::list<Mill> &mills) {
    program.push_back(runAll(mills, measureRun));
    plain.push_back(runAll(mills, measurePlainRun));
  }

  Samples ratios(const std::function<double(const RunResult &)> &value) const {
    Samples samples;
    for (std::size_t repeat = 0; repeat < program.size(); ++repeat) {
      samples.add(value(program[repeat]) / value(plain[repeat]));
    }
    return samples;
  }
};

std::vector<std::string> ratioRow(const std::string &name, const Comparison &runs, double target) {
  const Samples planned = runs.ratios(&RunResult::planning);
  return {name,
          milliseconds(medianOf(runs.plain, &RunResult::planning)),
          milliseconds(medianOf(runs.program, &RunResult::planning)),
          withSpread(planned),
          withSpread(runs.ratios(&RunResult::total)),
          decimals(target, 2),
          verdict(planned.median() <= target)};
}

std::vector<std::string> phaseRow(const std::string &name, const std::vector<RunResult> &runs) {
  std::vector<std::string> row{name};
  for (std::size_t phase = 1; phase < kPhases; ++phase) {
    row.push_back(
        milliseconds(medianOf(runs, [phase](const RunResult &run) { return run.times[phase]; })));
  }
  row.push_back(percent(medianOf(runs, outsideSolver)));
  return row;
}

// The sums of two comparisons, repeat by repeat.
void addTo(Comparison &sum, const Comparison &runs) {
  const auto addAll = [](std::vector<RunResult> &sums, const std::vector<RunResult> &more) {
    sums.resize(more.size());
    for (std::size_t repeat = 0; repeat < more.size(); ++repeat) {
      sums[repeat].addTimes(more[repeat]);
    }
  };
  addAll(sum.program, runs.program);
  addAll(sum.plain, runs.plain);
}

struct Tables {
  Table ratios{{"Mill", "Plain, ms", "Program, ms", "Generation and selection", "Whole run",
                "To reach", "Reached"}};
  Table phases{{"ms", "reading", "masters", "pricing", "rest", "final LPs", "solutions", "rest",
                "report", "prune", "export", "outside the solver"}};
};

void measureSize(const Size &size, int repeats, const std::filesystem::path &folder,
                 Tables &tables) {
  Comparison together;
  for (const Extent &extent : {kSmall, kLarge}) {
    for (const int widthsInPattern : {5, 10}) {
      const std::list<Mill> mills = millsOf(size, extent, widthsInPattern, folder);
      Comparison runs;
      for (int repeat = 0; repeat < repeats; ++repeat) {
        runs.add(mills);
      }
      const std::string name = nameOf(size) + ", " + nameOf(extent) + ", up to " +
                               std::to_string(widthsInPattern) + " in a pattern";
      tables.ratios.row(ratioRow(name, runs, size.target));
      tables.phases.row(phaseRow(name, runs.program));
      tables.phases.row(phaseRow("the same, plain", runs.plain));
      addTo(together, runs);
    }
  }
  tables.ratios.row(ratioRow("**" + nameOf(size) + ", all of them**", together, size.target));
}

}  // namespace

void writeWholeRuns(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Tables tables;
  for (const Size &size : kSizes) {
    measureSize(size, repeats, folder, tables);
  }
  out << "## Whole runs\n\nThe program against a plain run: literal pricing, and CLP's primal "
         "simplex over all columns, warm.\nOne grade; with 1 deckle width 2 periods and 1000 "
         "orders, with 3 deckle widths 6 periods and 4000\norders. The second number is that of "
         "new patterns an iteration and deckle width.\nMilliseconds are those of column generation "
         "and final selection. The two runs meet other dual values\nand so find other patterns; "
         "the ratio holds that too. Up to "
      << kSmallWidths << " widths each line sums up " << kSmallMills
      << " mills that\ndiffer in their seed.\n\n"
      << tables.ratios
      << "\nWhere the time goes. Masters, pricing with the new patterns' way into their sets, and "
         "rest are column\ngeneration; final LPs, solutions and rest are final selection. Each of "
         "the two steps is measured in\nprocessor time and split by the time that elapsed in its "
         "parts, so on a busy machine parts of a few\nmilliseconds are uncertain. The last column "
         "counts everything but the solver, reading and export\nincluded; to reach: at most 15 % "
         "of a large run.\n\n"
      << tables.phases;
}

}  // namespace corvane::bench
