#include "planning/demand_table.h"

#include <algorithm>
#include <functional>
#include <unordered_set>

namespace {

using WidthSet = std::unordered_set<double>;

void addDistinct(const PeriodDemand &demand, WidthSet &seen, std::vector<double> &widths) {
  for (const DemandEntry &entry : demand.demands) {
    if (seen.insert(entry.width).second) {
      widths.push_back(entry.width);
    }
  }
}

}  // namespace

PeriodDemand &DemandTable::addPeriod(const QString &grade, const QString &period) {
  GradeDemand *&entry = byGrade[grade];
  if (entry == nullptr) {
    grades.append(GradeDemand{grade, {}, {}});
    entry = &grades.last();
  }
  entry->periods.append(PeriodDemand{period, {}});
  PeriodDemand *added = &entry->periods.last();
  entry->byPeriod.insert(period, added);
  return *added;
}

std::vector<double> distinctWidths(const PeriodDemand &demand) {
  WidthSet seen;
  std::vector<double> widths;
  addDistinct(demand, seen, widths);
  std::sort(widths.begin(), widths.end(), std::greater<>());
  return widths;
}

std::vector<double> distinctWidths(const GradeDemand &demand) {
  WidthSet seen;
  std::vector<double> widths;
  for (const PeriodDemand &period : demand.periods) {
    addDistinct(period, seen, widths);
  }
  std::sort(widths.begin(), widths.end(), std::greater<>());
  return widths;
}

std::vector<DemandEntry> demandList(const PeriodDemand *demand) {
  std::vector<DemandEntry> list;
  if (demand == nullptr) {
    return list;
  }
  WidthSet seen;
  for (const DemandEntry &entry : demand->demands) {
    if (seen.insert(entry.width).second) {
      list.push_back(entry);
    }
  }
  std::sort(list.begin(), list.end(),
            [](const DemandEntry &a, const DemandEntry &b) { return a.width > b.width; });
  return list;
}
