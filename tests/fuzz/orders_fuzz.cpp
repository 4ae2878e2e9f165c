// Input: a machine file, a line "%%", and an order file. Whatever they hold, every order kept is
// one that a cutter can make, is kept once, and stands in the demand table, the grades and the
// periods; and the demand of a width never falls below what was ordered of it.

#include <algorithm>
#include <map>
#include <vector>

#include "check.h"
#include "core/skip_list_cursor.h"
#include "memory_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "planning_checks.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::MemoryFile;
using corvane::fuzz::require;

void requireDistinct(const QLinkedList<QString> &texts, const char *what) {
  std::vector<QString> sorted(texts.cbegin(), texts.cend());
  std::sort(sorted.begin(), sorted.end());
  require(std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end(), what);
}

void requireOrder(const PlanningData &data, const Order &order) {
  require(order.good == 1 && order.width >= 0.0 && order.quantity >= 0, "a good order");
  const auto widest = data.widestCutter.constFind(order.grade);
  require(widest != data.widestCutter.constEnd() && *widest >= order.width,
          "a cutter for the order");
  require(data.isPlanned(order.grade), "the grade of the order");
  require(data.periods.contains(order.period), "the period of the order");
  const GradeDemand *grade = data.demand.find(order.grade);
  require(grade != nullptr, "demand for the grade");
  const PeriodDemand *period = grade->find(order.period);
  require(period != nullptr, "demand in the period");
  const std::vector<double> widths = distinctWidths(*period);
  require(std::find(widths.begin(), widths.end(), order.width) != widths.end(), "demand");
}

void requireConsistency(const PlanningData &data) {
  require(std::is_sorted(data.grades.cbegin(), data.grades.cend()), "grades in order");
  requireDistinct(data.grades, "each grade once");
  requireDistinct(data.periods, "each period once");
  require(data.grades.size() == data.demand.grades.size(), "a demand entry a grade");
  forEachElement(data.orders, [&](const Order &order) { requireOrder(data, order); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const corvane::fuzz::Quiet quiet;
  static MemoryFile machines;
  static MemoryFile orders;
  std::string_view rest = corvane::fuzz::textOf(data, size);
  machines.write(corvane::fuzz::takePart(rest));
  orders.write(rest);
  PlanningComparators comparators;
  PlanningData planning(comparators);
  corvane::fuzz::Sink sink;
  std::ostream log(&sink);
  std::ifstream machineStream;
  std::ifstream orderStream;
  readMachineFile(planning, QString::fromStdString(machines.name()), machineStream, log);
  readOrderFile(planning, QString::fromStdString(orders.name()), orderStream, log);
  require(!orderStream.is_open(), "a closed order file");
  corvane::fuzz::requireStrictOrder(planning.orders, comparators.order);
  requireConsistency(planning);
  return 0;
}
