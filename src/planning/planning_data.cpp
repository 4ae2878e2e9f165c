#include "planning/planning_data.h"

#include "core/skip_list_cursor.h"

namespace corvane {

namespace {

template <typename T>
void deleteRecords(const skipList<T> &list) {
  forEachElement(list, [](T &record) { delete &record; });
}

}  // namespace

PlanningData::PlanningData(PlanningComparators &theComparators)
    : comparators(theComparators),
      names(&theComparators.name, false),
      cutters(&theComparators.cutter, false),
      orders(&theComparators.order, true),
      freightRates(&theComparators.freightRate, false) {}

PlanningData::~PlanningData() {
  deleteRecords(freightRates);
  deleteRecords(orders);
  deleteRecords(cutters);
}

bool PlanningData::isPlanned(const QString &grade) const {
  QString *found = nullptr;
  return names.search(grade, found) == skipList<QString>::kFound;
}

const std::vector<const Cutter *> &PlanningData::cuttersOf(const QString &grade) const {
  static const std::vector<const Cutter *> none;
  const auto found = cuttersByGrade.constFind(grade);
  return found != cuttersByGrade.constEnd() ? *found : none;
}

const std::vector<double> &PlanningData::demandWidthsOf(const QString &grade) const {
  static const std::vector<double> none;
  const GradeDemand *found = demand.find(grade);
  return found != nullptr ? found->widths : none;
}

}  // namespace corvane
