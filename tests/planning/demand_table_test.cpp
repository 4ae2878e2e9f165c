#include "planning/demand_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PeriodDemand period(const char *name, const std::vector<DemandEntry> &entries) {
  PeriodDemand demand{name, {}};
  for (const DemandEntry &entry : entries) {
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

TEST(DemandTable, TheWidthsOfAPeriodAreDistinctAndTheWidestComesFirst) {
  EXPECT_THAT(distinctWidths(period("1", {{30, 1}, {50, 2}, {30, 3}, {40, 4}})),
              ElementsAre(50, 40, 30));
  EXPECT_THAT(distinctWidths(period("1", {})), IsEmpty());
}

TEST(DemandTable, TheWidthsOfAGradeAreThoseOfAllItsPeriods) {
  GradeDemand grade;
  EXPECT_THAT(distinctWidths(grade), IsEmpty());
  grade.periods.append(period("2", {{30, 1}, {50, 2}}));
  grade.periods.append(period("1", {{60, 1}, {50, 9}}));
  EXPECT_THAT(distinctWidths(grade), ElementsAre(60, 50, 30));
}

TEST(DemandTable, TheDemandListHasEachWidthOnceWithTheQuantityOfItsFirstEntry) {
  const PeriodDemand demand = period("1", {{30, 10}, {50, 2}, {30, 20}, {40, 4}});
  EXPECT_THAT(demandList(&demand), ElementsAre(Demands(50, 2), Demands(40, 4), Demands(30, 10)));
}

TEST(DemandTable, WithoutAPeriodTheDemandListIsEmpty) {
  EXPECT_THAT(demandList(nullptr), IsEmpty());
}

}  // namespace
}  // namespace corvane
