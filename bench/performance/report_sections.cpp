#include "report_sections.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "measurements.h"
#include "samples.h"
#include "table.h"

namespace bench {

namespace {

const RunKind kProgram{};
// Literal pricing, and a plain warm primal simplex of CLP.
const RunKind kPlain{true, "primal"};
const RunKind kLiteralPricing{true, nullptr};

struct Size {
  int widths;
  int newPatterns;
  double target;  // program to plain, generation and selection
};
constexpr Size kSizes[] = {{20, 100, 0.5},  {60, 100, 0.5},    {60, 1000, 0.3},
                           {150, 100, 0.4}, {150, 1000, 0.15}, {400, 100, 0.5}};

// The size of a mill beside its widths: a few columns an iteration, or some times as many.
struct Extent {
  int deckleWidths;
  int periods;
  long long orders;
};
constexpr Extent kSmall{1, 2, 1000};
constexpr Extent kLarge{3, 6, 4000};

MillShape millOf(const Size &size, const Extent &extent = kSmall) {
  MillShape shape;
  shape.widths = size.widths;
  shape.newPatterns = size.newPatterns;
  shape.deckleWidths = extent.deckleWidths;
  shape.periods = extent.periods;
  shape.orders = extent.orders;
  return shape;
}

std::string nameOf(const Size &size) {
  return std::to_string(size.widths) + " widths, " + std::to_string(size.newPatterns);
}

std::string nameOf(const Size &size, const Extent &extent) {
  return nameOf(size) + (extent.deckleWidths == 1
                             ? ", 1 deckle"
                             : ", " + std::to_string(extent.deckleWidths) + " deckles");
}

std::string milliseconds(double seconds) {
  return decimals(1000 * seconds, 1);
}

double planning(const RunResult &run) {
  return run.generation() + run.selection();
}

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

std::vector<std::string> phaseRow(const std::string &name, const std::vector<RunResult> &runs) {
  std::vector<std::string> row{name};
  for (std::size_t phase = 1; phase < kPhases; ++phase) {
    row.push_back(
        milliseconds(medianOf(runs, [phase](const RunResult &run) { return run.times[phase]; })));
  }
  row.push_back(percent(medianOf(runs, outsideSolver)));
  return row;
}

// The program and the plain run in turns, and the ratios of each turn.
struct Comparison {
  std::vector<RunResult> program;
  std::vector<RunResult> plain;
  Samples planned;
  Samples whole;
};

Comparison compareRuns(const Mill &mill, int repeats) {
  Comparison runs;
  for (int repeat = 0; repeat < repeats; ++repeat) {
    const RunResult &program = runs.program.emplace_back(measureRun(mill, kProgram));
    const RunResult &plain = runs.plain.emplace_back(measureRun(mill, kPlain));
    runs.planned.add(planning(program) / planning(plain));
    runs.whole.add(program.total() / plain.total());
  }
  return runs;
}

const char *verdict(bool reached) {
  return reached ? "yes" : "no";
}

}  // namespace

void writeWholeRuns(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table ratios({"Mill", "Plain, ms", "Program, ms", "Generation and selection", "Whole run",
                "To reach", "Reached"});
  Table phases({"ms", "reading", "masters", "pricing", "pattern sets", "rest", "final LPs",
                "solution, lists", "rest", "report", "prune", "export", "outside the solver"});
  for (const Extent &extent : {kSmall, kLarge}) {
    for (const Size &size : kSizes) {
      const Mill mill(millOf(size, extent), folder);
      const Comparison runs = compareRuns(mill, repeats);
      const std::string name = nameOf(size, extent);
      ratios.row({name, milliseconds(medianOf(runs.plain, planning)),
                  milliseconds(medianOf(runs.program, planning)), withSpread(runs.planned),
                  withSpread(runs.whole), decimals(size.target, 2),
                  verdict(runs.planned.median() <= size.target)});
      phases.row(phaseRow(name, runs.program));
      phases.row(phaseRow("the same, plain", runs.plain));
    }
  }
  out << "## Whole runs\n\nThe program against a plain run: literal pricing, and CLP's primal "
         "simplex over all columns, warm.\nOne grade; with 1 deckle width 2 periods and 1000 "
         "orders, with 3 deckle widths 6 periods and 4000\norders. The second number is that of "
         "new patterns an iteration and deckle width.\nMilliseconds are those of column generation "
         "and final "
         "selection. The two runs meet other dual values\nand so find other patterns; the ratio "
         "holds that too.\n\n"
      << ratios
      << "\nWhere the time goes. Masters to rest are column generation, final LPs to rest final "
         "selection. Each of\nthe two steps is measured in processor time and split by the time "
         "that elapsed in its parts, so on a\nbusy machine parts of a few milliseconds are "
         "uncertain. The last column counts everything but the\nsolver, reading and export "
         "included; to reach: at most 15 % of a large run.\n\n"
      << phases;
}

void writeSolver(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table table(
      {"Mill", "Masters to warm primal", "Final LPs to cold primal", "Final LPs to cold dual"});
  for (const Size &size : kSizes) {
    const Mill mill(millOf(size), folder);
    Samples masters;
    Samples primal;
    Samples dual;
    for (int repeat = 0; repeat < repeats; ++repeat) {
      const SolverTimes times = measureSolver(mill);
      masters.add(times.mastersLayer / times.mastersPlain);
      primal.add(times.finalsLayer / times.finalsPrimal);
      dual.add(times.finalsLayer / times.finalsDual);
    }
    table.row({nameOf(size), withSpread(masters), withSpread(primal), withSpread(dual)});
  }
  out << "## The solver layer\n\nThe LPs of one run, recorded and solved again: by the layer, and "
         "by CLP over all columns.\n\n"
      << table;
}

void writePricing(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table table({"Mill", "Literal, ms", "Program, ms", "Ratio"});
  for (const Size &size : kSizes) {
    const Mill mill(millOf(size), folder);
    Samples literal;
    Samples program;
    Samples ratio;
    for (int repeat = 0; repeat < repeats; ++repeat) {
      const double literalTime = measureRun(mill, kLiteralPricing)[Phase::kPricing];
      const double programTime = measureRun(mill, kProgram)[Phase::kPricing];
      literal.add(literalTime);
      program.add(programTime);
      ratio.add(programTime / literalTime);
    }
    table.row({nameOf(size), milliseconds(literal.median()), milliseconds(program.median()),
               withSpread(ratio)});
  }
  out << "## Pricing\n\nThe same run, with the same draws and picks, on the literal pricing and on "
         "the program's, price list\nincluded; to reach: a quarter. Split by elapsed time as "
         "above; "
         "`pricing_bench` measures candidates one by\none in processor time.\n\n"
      << table;
}

void writeFiles(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table reading({"Orders", "Reading, ms", "To reading and splitting alone", "To reach", "Reached"});
  for (const long long orders : {10000LL, 100000LL, 1000000LL}) {
    MillShape shape;
    shape.widths = 400;
    shape.grades = 4;
    shape.deckleWidths = 3;
    shape.periods = 12;
    shape.orders = orders;
    shape.customers = 2000;
    const Mill mill(shape, folder);
    Samples work;
    Samples ratio;
    for (int repeat = 0; repeat < repeats; ++repeat) {
      const FileTimes times = measureReading(mill);
      work.add(times.work);
      ratio.add(times.work / times.reference);
    }
    reading.row({std::to_string(orders), milliseconds(work.median()), withSpread(ratio), "3.00",
                 verdict(ratio.median() <= 3)});
  }
  Table writing(
      {"Import file, MB", "Export, ms", "Speed to raw flushed writing", "To reach", "Reached"});
  for (const int periods : {2, 12}) {
    MillShape shape;
    shape.deckleWidths = 3;
    shape.periods = periods;
    shape.orders = 5000;
    const Mill mill(shape, folder);
    Samples work;
    Samples speed;
    double bytes = 0;
    for (int repeat = 0; repeat < repeats; ++repeat) {
      const FileTimes times = measureExport(mill);
      work.add(times.work);
      speed.add(times.reference / times.work);
      bytes = times.bytes;
    }
    writing.row({decimals(bytes / 1e6, 1), milliseconds(work.median()), withSpread(speed), "0.50",
                 verdict(speed.median() >= 0.5)});
  }
  out << "## Files\n\nThe order file (4 grades, 12 periods, 400 widths, 2000 customers) against "
         "`std::getline` and splitting\nat commas in place:\n\n"
      << reading
      << "\nThe import file against writing the same lines from memory, each with a flush:\n\n"
      << writing;
}

void writeMemory(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table orders({"Orders", "Peak of reading, MB", "Bytes an order"});
  for (const long long count : {100000LL, 300000LL, 1000000LL}) {
    MillShape shape;
    shape.widths = 400;
    shape.grades = 4;
    shape.periods = 12;
    shape.orders = count;
    shape.customers = 2000;
    const Mill mill(shape, folder);
    Samples peak;
    for (int repeat = 0; repeat < std::min(repeats, 3); ++repeat) {
      peak.add(measureReading(mill).bytes);
    }
    orders.row({std::to_string(count), decimals(peak.median() / 1e6, 1),
                decimals(peak.median() / static_cast<double>(count), 0)});
  }
  Table patterns({"Mill", "Patterns before pruning", "Peak above reading, MB", "Bytes a pattern"});
  for (const Size &size : kSizes) {
    const Mill mill(millOf(size), folder);
    const RunResult run = measureRun(mill, kProgram);
    const double bytes = run.peakMemory - run.readMemory;
    patterns.row({nameOf(size), decimals(run.patterns, 0), decimals(bytes / 1e6, 1),
                  decimals(bytes / run.patterns, 0)});
  }
  out << "## Memory\n\n" << orders << '\n' << patterns;
}

void writeGrowth(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table table({"Grades", "Periods", "Generation and selection, ms", "Per grade and period, ms"});
  for (const auto &[grades, periods] :
       {std::pair{1, 2}, {1, 4}, {1, 8}, {1, 12}, {2, 2}, {4, 2}, {8, 2}}) {
    MillShape shape;
    shape.grades = grades;
    shape.periods = periods;
    shape.orders = 1000LL * grades * periods;
    const Mill mill(shape, folder);
    Samples time;
    for (int repeat = 0; repeat < repeats; ++repeat) {
      time.add(planning(measureRun(mill, kProgram)));
    }
    table.row({std::to_string(grades), std::to_string(periods), milliseconds(time.median()),
               milliseconds(time.median() / (grades * periods))});
  }
  out << "## Growth\n\n60 widths, 100 new patterns. A further period adds patterns to the sets "
         "that its final LP and those of all\nother periods choose from; a further grade has sets "
         "of its own.\n\n"
      << table;
}

}  // namespace bench
