// Input: a parameter file. Whatever it holds, every setting is within its bounds afterwards, and
// reading the file once more changes nothing.

#include <algorithm>
#include <sstream>

#include "app/parameter_file.h"
#include "check.h"
#include "memory_file.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::MemoryFile;
using corvane::fuzz::require;

bool isFlag(qint32 value) {
  return value == 0 || value == 1;
}

template <typename Number>
bool isWithin(Number value, Number low, Number high) {
  return low <= value && value <= high;
}

void requireBounds(const RunParameters &run) {
  require(isFlag(run.batch) && isFlag(run.delay) && isFlag(run.patternsOnly), "flags of 0 or 1");
  require(isWithin(run.maximumWidthsInPattern, 5, 10), "widths in a pattern");
  require(isWithin(run.threshold, 0.0, 100.0), "threshold");
  require(run.occurMin > 0 && run.daysPerPeriod > 0, "occur min and days above 0");
  require(isWithin(run.newPatternsPerIteration, 10, 100000), "new patterns per iteration");
  require(run.widthPickSetSize > 0.0 && run.widthPickSetSize <= 100.0, "pick set size");
  require(isWithin(run.stopGeneratingThreshold, 100, 10000), "stop generating threshold");
  require(isWithin(run.seed, -1, 10000), "seed");
  require(run.solver == "Dual" || run.solver == "Barrier", "solver");
}

std::string summaryOf(const RunParameters &run) {
  std::ostringstream summary;
  printParameters(run, summary);
  return summary.str() + std::to_string(run.seed);
}

void read(RunParameters &run, const std::string &name) {
  corvane::fuzz::Sink sink;
  std::ostream messages(&sink);
  require(readParameters(run, name, messages), "a parameter file that can be read");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static MemoryFile file;
  file.write(corvane::fuzz::textOf(data, size));
  RunParameters run;
  read(run, file.name());
  requireBounds(run);
  const std::string summary = summaryOf(run);
  require(std::count(summary.begin(), summary.end(), '\n') == 18, "18 lines of summary");
  read(run, file.name());
  require(summaryOf(run) == summary, "the same summary after a second reading");
  return 0;
}
