// Input: a machine file. Whatever it holds, the cutters are in order without repeats, the widths
// are ascending and distinct where they are numbers, and every cutter's width is among them.

#include <algorithm>
#include <cmath>
#include <vector>

#include "check.h"
#include "core/skip_list_cursor.h"
#include "memory_file.h"
#include "planning/machine_file.h"
#include "planning_checks.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::require;

void requireSortedWidths(const PlanningData &data) {
  const std::vector<double> widths(data.cutterWidths.cbegin(), data.cutterWidths.cend());
  if (std::any_of(widths.begin(), widths.end(), [](double width) { return std::isnan(width); })) {
    return;
  }
  for (std::size_t at = 1; at < widths.size(); ++at) {
    require(widths[at - 1] < widths[at], "ascending widths");
  }
  forEachElement(data.cutters, [&](const Cutter &cutter) {
    require(std::binary_search(widths.begin(), widths.end(), cutter.width), "a known width");
    require(*data.widestCutter.find(cutter.grade) >= cutter.width, "the widest cutter");
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const corvane::fuzz::Quiet quiet;
  static corvane::fuzz::MemoryFile file;
  file.write(corvane::fuzz::textOf(data, size));
  PlanningComparators comparators;
  PlanningData planning(comparators);
  corvane::fuzz::Sink sink;
  std::ostream log(&sink);
  std::ifstream stream;
  readMachineFile(planning, QString::fromStdString(file.name()), stream, log);
  require(!stream.is_open(), "a closed machine file");
  corvane::fuzz::requireStrictOrder(planning.cutters, comparators.cutter);
  requireSortedWidths(planning);
  return 0;
}
