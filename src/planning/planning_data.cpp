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

QHash<QString, std::vector<const Cutter *>> cuttersByGrade(const PlanningData &data) {
  QHash<QString, std::vector<const Cutter *>> byGrade;
  forEachElement(data.cutters,
                 [&](const Cutter &cutter) { byGrade[cutter.grade].push_back(&cutter); });
  return byGrade;
}

}  // namespace corvane
