#include "planning/planning_data.h"

#include "planning/planning_files.h"
#include "support/skip_list_dump.h"

namespace corvane {
namespace {

class PlanningDataTest : public PlanningFilesTest {};

TEST_F(PlanningDataTest, StartsEmpty) {
  EXPECT_EQ(data.names.count(), 0);
  EXPECT_EQ(data.cutters.count(), 0);
  EXPECT_EQ(data.orders.count(), 0);
  EXPECT_EQ(data.freightRates.count(), 0);
  EXPECT_TRUE(data.cutterWidths.isEmpty());
  EXPECT_TRUE(data.grades.isEmpty());
  EXPECT_TRUE(data.periods.isEmpty());
}

TEST_F(PlanningDataTest, EveryListHasTheLevelParameterThree) {
  EXPECT_EQ(data.names.levelParameter(), 3);
  EXPECT_EQ(data.cutters.levelParameter(), 3);
  EXPECT_EQ(data.orders.levelParameter(), 3);
  EXPECT_EQ(data.freightRates.levelParameter(), 3);
}

TEST_F(PlanningDataTest, OnlyTheOrdersAllowDuplicates) {
  Order order;
  Order sameOrder;
  EXPECT_EQ(data.orders.insert(&order), 0);
  EXPECT_EQ(data.orders.insert(&sameOrder), 0);
  data.orders.clear();
  Cutter cutter;
  Cutter sameCutter;
  EXPECT_EQ(data.cutters.insert(&cutter), 0);
  EXPECT_EQ(data.cutters.insert(&sameCutter), 2);
  data.cutters.clear();
  FreightRate rate;
  FreightRate sameRate;
  EXPECT_EQ(data.freightRates.insert(&rate), 0);
  EXPECT_EQ(data.freightRates.insert(&sameRate), 2);
  data.freightRates.clear();
  QString name("G");
  QString sameName("G");
  EXPECT_EQ(data.names.insert(&name), 0);
  EXPECT_EQ(data.names.insert(&sameName), 2);
}

TEST_F(PlanningDataTest, AGradeWithOrdersIsPlanned) {
  readMachines("A,1,G1,100,1,1,1\nA,1,G2,100,1,1,1\n");
  readOrders("1,G1,30,10,Acme\n");
  EXPECT_TRUE(data.isPlanned("G1"));
  EXPECT_FALSE(data.isPlanned("G2"));
  EXPECT_FALSE(data.isPlanned("G9"));
}

TEST_F(PlanningDataTest, TheCuttersOfAGradeComeInTheOrderOfTheCutterList) {
  readMachines("B,1,G1,1,1,1,1\nA,1,G2,2,1,1,1\nA,2,G1,3,1,1,1\nA,1,G1,4,1,1,1\n");
  std::vector<double> widths;
  for (const Cutter *cutter : data.cuttersOf("G1")) {
    widths.push_back(cutter->width);
  }
  EXPECT_THAT(widths, testing::ElementsAre(4, 3, 1));
  EXPECT_EQ(data.cuttersOf("G2").size(), 1U);
  EXPECT_THAT(data.cuttersOf("G3"), testing::IsEmpty());
}

TEST_F(PlanningDataTest, TheDemandWidthsOfAGradeAreTheWidestFirstAndEachOnce) {
  readMachines("A,1,G1,100,1,1,1\nA,1,G2,100,1,1,1\n");
  readOrders("2,G1,30,10,Acme\n1,G1,40,10,Acme\n1,G1,30,10,Best\n");
  EXPECT_THAT(data.demandWidthsOf("G1"), testing::ElementsAre(40, 30));
  EXPECT_THAT(data.demandWidthsOf("G2"), testing::IsEmpty());
}

TEST_F(PlanningDataTest, TheCuttersOfAMachineFormAGroup) {
  readMachines("A,2,G1,1,1,1,1\nB,1,G1,2,1,1,1\nA,1,G2,3,1,1,1\nA,1,G1,4,1,1,1\n");
  SkipListGroupCursor<Cutter> cursor(data.cutters, comparators.cutterByName);
  std::vector<std::string> machines;
  Cutter *first = nullptr;
  for (int at = cursor.firstGroup(first); at == 0; at = cursor.nextGroup(first)) {
    machines.push_back(utf8(first->location + first->name) + ":");
    while (const Cutter *cutter = cursor.next()) {
      machines.back() += utf8(cutter->grade);
    }
  }
  EXPECT_THAT(machines, testing::ElementsAre("A1:G1G2", "A2:G1", "B1:G1"));
}

TEST_F(PlanningDataTest, TheRatesOfACustomerAndMillFormAGroup) {
  readRates("C,N,T,1,0\nC,N,R,2,0\nC,S,R,3,0\nD,N,R,4,0\n");
  SkipListGroupCursor<FreightRate> cursor(data.freightRates, comparators.freightRateCustMill);
  FreightRate *first = nullptr;
  ASSERT_EQ(cursor.findGroup({"C", "N", ""}, first), 0);
  EXPECT_EQ(cursor.next()->rate, 2);
  EXPECT_EQ(cursor.next()->rate, 1);
  EXPECT_EQ(cursor.next(), nullptr);
  EXPECT_EQ(cursor.findGroup({"C", "W", ""}, first), 1);
}

TEST_F(PlanningDataTest, TheListsAreSoundAfterReading) {
  std::string machines;
  std::string orders;
  std::string rates;
  for (int at = 0; at < 500; ++at) {
    const std::string number = std::to_string(at * 7919 % 500);
    machines += "M" + number + ",1,G,100,1,1,1\n";
    orders += number + ",G,30,1,C" + number + "\n";
    rates += "C" + number + ",M,R,1,0\n";
  }
  readMachines(machines);
  readOrders(orders);
  readRates(rates);
  EXPECT_EQ(SkipListInspector<Cutter>::complaint(data.cutters), "");
  EXPECT_EQ(SkipListInspector<Order>::complaint(data.orders), "");
  EXPECT_EQ(SkipListInspector<FreightRate>::complaint(data.freightRates), "");
  EXPECT_EQ(data.cutters.count() + data.orders.count() + data.freightRates.count(), 1500);
}

}  // namespace
}  // namespace corvane
