#include "planning/demand_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A period with an entry a width, given widest first.
PeriodDemand period(const char *name, const std::vector<DemandEntry> &firstOfWidths) {
  PeriodDemand demand{name, {}, firstOfWidths};
  for (const DemandEntry &entry : firstOfWidths) {
    demand.demands.append(entry);
  }
  return demand;
}

MATCHER_P2(Demands, width, quantity, "") {
  return arg.width == width && arg.quantity == quantity;
}

TEST(DemandTable, GradesAndPeriodsAreFoundByName) {
  DemandTable table;
  table.addPeriod("G2", "2").demands.append({30, 2});
  table.addPeriod("G1", "1");
  table.addPeriod("G2", "1").demands.append({40, 1});
  ASSERT_EQ(table.grades.size(), 2);
  EXPECT_EQ(table.grades.first().grade, QString("G2"));
  const GradeDemand *grade = table.find("G2");
  ASSERT_EQ(grade, &table.grades.first());
  ASSERT_EQ(grade->periods.size(), 2);
  EXPECT_EQ(grade->periods.first().period, QString("2"));
  EXPECT_EQ(grade->find("2")->demands.first().quantity, 2);
  EXPECT_EQ(grade->find("1")->demands.first().quantity, 1);
  EXPECT_EQ(grade->find("3"), nullptr);
  EXPECT_EQ(table.find("G3"), nullptr);
}

TEST(DemandTable, TheWidthsOfAPeriodAreThoseOfItsList) {
  EXPECT_THAT(distinctWidths(period("1", {{50, 2}, {40, 4}, {30, 1}})), ElementsAre(50, 40, 30));
  EXPECT_THAT(distinctWidths(period("1", {})), IsEmpty());
}

TEST(DemandTable, TheWidthsOfAGradeAreThoseOfAllItsPeriods) {
  GradeDemand grade;
  grade.gatherWidths();
  EXPECT_THAT(grade.widths, IsEmpty());
  grade.periods.append(period("2", {{50, 2}, {30, 1}}));
  grade.periods.append(period("1", {{60, 1}, {50, 9}}));
  grade.periods.append(period("3", {{70, 1}, {30.000000000000004, 9}}));
  grade.gatherWidths();
  EXPECT_THAT(grade.widths, ElementsAre(70, 60, 50, 30.000000000000004, 30));
}

TEST(DemandTable, TheDemandListOfAPeriodIsItsOwn) {
  const PeriodDemand demand = period("1", {{50, 2}, {40, 4}, {30, 10}});
  EXPECT_THAT(demandList(&demand), ElementsAre(Demands(50, 2), Demands(40, 4), Demands(30, 10)));
  EXPECT_EQ(&demandList(&demand), &demand.firstOfWidths);
}

TEST(DemandTable, WithoutAPeriodTheDemandListIsEmpty) {
  EXPECT_THAT(demandList(nullptr), IsEmpty());
}

}  // namespace
}  // namespace corvane
