// corvane_performance [REPORT [REPEATS]]: measures and prints the report, and writes it to the
// file.
#include <iostream>
#include "measurements.h"
#include "samples.h"
int main() {
  using namespace bench;
  const std::filesystem::path parent = std::filesystem::temp_directory_path() / "corvane_perf";
  for (auto [w, n] :
       {std::pair{20, 100}, {60, 100}, {60, 1000}, {150, 100}, {150, 1000}, {400, 100}}) {
    MillShape shape;
    shape.widths = w;
    shape.newPatterns = n;
    shape.orders = 1000;
    Mill mill(shape, parent);
    for (const RunKind &kind : {RunKind{}, RunKind{true, "primal"}, RunKind{true, nullptr}}) {
      RunResult r = measureRun(mill, kind);
      std::cout << w << ' ' << n << " lit=" << kind.literalPricing << " total " << r.total()
                << " gen " << r.generation() << " sel " << r.selection() << " patterns "
                << r.patterns << "/" << r.keptPatterns << " |";
      for (double t : r.times)
        std::cout << ' ' << decimals(t * 1000, 1);
      std::cout << " mem " << r.readMemory / 1e6 << ' ' << r.peakMemory / 1e6 << '\n';
    }
    SolverTimes s = measureSolver(mill);
    std::cout << "  masters " << s.mastersLayer / s.mastersPlain << " finals/primal "
              << s.finalsLayer / s.finalsPrimal << " finals/dual " << s.finalsLayer / s.finalsDual
              << std::endl;
    FileTimes e = measureExport(mill), rd = measureReading(mill);
    std::cout << "  export " << e.work << ' ' << e.reference / e.work << "  read "
              << rd.work / rd.reference << std::endl;
  }
}
