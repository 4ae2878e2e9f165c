// Input: a freight rate file. Whatever it holds, the rates are in order without repeats, and there
// are no more than the file has line breaks.

#include <algorithm>

#include "check.h"
#include "memory_file.h"
#include "planning/freight_rate_file.h"
#include "planning_checks.h"
#include "target.h"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using corvane::fuzz::require;
  const corvane::fuzz::Quiet quiet;
  static corvane::fuzz::MemoryFile file;
  const std::string_view text = corvane::fuzz::textOf(data, size);
  file.write(text);
  PlanningComparators comparators;
  PlanningData planning(comparators);
  corvane::fuzz::Sink sink;
  std::ostream log(&sink);
  std::ifstream stream;
  readFreightRateFile(planning, QString::fromStdString(file.name()), stream, log);
  require(!stream.is_open(), "a closed freight rate file");
  corvane::fuzz::requireStrictOrder(planning.freightRates, comparators.freightRate);
  require(planning.freightRates.count() <= std::count(text.begin(), text.end(), '\n'),
          "at most one rate a line");
  return 0;
}
