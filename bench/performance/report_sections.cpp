#include "report_sections.h"

#include <algorithm>
#include <utility>

#include "measurements.h"
#include "mill_sizes.h"
#include "samples.h"
#include "table.h"

namespace corvane::bench {

void writeSolver(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  Table table(
      {"Mill", "Masters to warm primal", "Final LPs to cold primal", "Final LPs to cold dual"});
  for (const Extent &extent : {kSmall, kLarge}) {
    for (const Size &size : kSizes) {
      const Mill mill(millOf(size, extent), folder);
      Samples masters;
      Samples primal;
      Samples dual;
      for (int repeat = 0; repeat < repeats; ++repeat) {
        const SolverTimes times = measureSolver(mill);
        masters.add(times.mastersLayer / times.mastersPlain);
        primal.add(times.finalsLayer / times.finalsPrimal);
        dual.add(times.finalsLayer / times.finalsDual);
      }
      table.row({nameOf(size) + ", " + nameOf(extent), withSpread(masters), withSpread(primal),
                 withSpread(dual)});
    }
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
      const PricingTimes times = measurePricing(mill);
      literal.add(times.literal);
      program.add(times.program);
      ratio.add(times.program / times.literal);
    }
    table.row({nameOf(size), milliseconds(literal.median()), milliseconds(program.median()),
               withSpread(ratio)});
  }
  out << "## Pricing\n\nThe pricing of one run, price lists included, again on the dual values "
         "that "
         "its masters had, with the\nsame draws and picks: literally and by the program; to reach: "
         "a quarter. `pricing_bench` measures\ncandidates one by one.\n\n"
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
    const RunResult run = measureRun(mill);
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
      time.add(measureRun(mill).planning());
    }
    table.row({std::to_string(grades), std::to_string(periods), milliseconds(time.median()),
               milliseconds(time.median() / (grades * periods))});
  }
  out << "## Growth\n\n60 widths, 100 new patterns. A further period adds patterns to the sets "
         "that its final LP and those of all\nother periods choose from; a further grade has sets "
         "of its own.\n\n"
      << table;
}

}  // namespace corvane::bench
