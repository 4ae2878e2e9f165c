#include "planning/demand_table.h"

#include <algorithm>
#include <functional>

namespace corvane {

namespace {

void appendWidths(const PeriodDemand &demand, std::vector<double> &widths) {
  for (const DemandEntry &entry : demand.firstOfWidths) {
    widths.push_back(entry.width);
  }
}

}  // namespace

void GradeDemand::gatherWidths() {
  widths.clear();
  for (const PeriodDemand &period : periods) {
    appendWidths(period, widths);
  }
  std::sort(widths.begin(), widths.end(), std::greater<>());
  widths.erase(std::unique(widths.begin(), widths.end()), widths.end());
}

PeriodDemand &DemandTable::addPeriod(const QString &grade, const QString &period) {
  GradeDemand *&entry = byGrade[grade];
  if (entry == nullptr) {
    grades.append(GradeDemand{grade, {}, {}, {}});
    entry = &grades.last();
  }
  entry->periods.append(PeriodDemand{period, {}, {}});
  PeriodDemand *added = &entry->periods.last();
  entry->byPeriod.insert(period, added);
  return *added;
}

std::vector<double> distinctWidths(const PeriodDemand &demand) {
  std::vector<double> widths;
  appendWidths(demand, widths);
  return widths;
}

const std::vector<DemandEntry> &demandList(const PeriodDemand *demand) {
  static const std::vector<DemandEntry> none;
  return demand != nullptr ? demand->firstOfWidths : none;
}

}  // namespace corvane
