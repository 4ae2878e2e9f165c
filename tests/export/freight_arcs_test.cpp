#include "export/freight_arcs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::Mill;
using testing::HasSubstr;

constexpr char kCutters[] = "North,W1,Fine,100,1,2.5,1\nSouth,W2,Board,100,1,2,1\n";
constexpr char kOrders[] = "1,Fine,30,7,Acme\n2,Board,40,7,Brown\n3,Board,40,7,Brown\n";

class FreightArcs : public support::ModelTest {
 protected:
  // The freight of the first order of Fine from the first cutter of a grade.
  std::string freight(const std::string &rates, const QString &cutterGrade = "Fine") {
    Mill mill(kCutters, kOrders, rates);
    const ModelData data(mill.data(), sets_, settings_);
    return write(data, [&](const ModelData &, ImportFile &file) {
      writeOrderFreight(data, file, *data.planning.cuttersOf(cutterGrade).front(), fineOrder(data),
                        row_, log_);
    });
  }

  static const Order &fineOrder(const ModelData &data) {
    const Order *found = nullptr;
    forEachElement(data.planning.orders,
                   [&](const Order &order) { found = order.grade == "Fine" ? &order : found; });
    return *found;
  }

  double cost(const std::string &rates, const QString &mode) {
    Mill mill(kCutters, kOrders, rates);
    const ModelData data(mill.data(), sets_, settings_);
    return freightCost(data, *data.planning.cuttersOf("Fine").front(), fineOrder(data), mode);
  }

  static std::string arc(const std::string &from, const std::string &to, const char *period,
                         const char *cost) {
    return "addarc <commodity> \"DemandWidth30\" <from> \"" + from + "\" <to> \"" + to +
           "\" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> \"" +
           period + "\" <cost> " + cost + "\n";
  }

  // The five lines of a delay node in one period.
  static std::string delayed(const std::string &node, const std::string &coordinates,
                             const char *delay, const char *period, const char *cost) {
    return "addnode <type> \"Delay\" <name> \"" + node + "\"" + coordinates + " <periodstodelay> " +
           delay + " <period> \"" + period + "\"\n" + "addattach <node> \"" + node +
           "\" <commodity> \"DemandWidth30\" <in> True\n" + "addattach <node> \"" + node +
           "\" <commodity> \"DemandWidth30\" <in> False\n" +
           arc("Fine_W1_30.000", node, period, cost) + arc(node, "Fine_Acme_30.000", period, "0");
  }

  quint32 row_ = 0;
  std::ostringstream log_;
};

TEST_F(FreightArcs, WithoutDelayAreOneAPeriodPricedWithTheFirstMode) {
  settings_.delay = false;
  EXPECT_EQ(freight("Acme,North,Truck,80,0\nAcme,North,Rail,40,1\n"),
            arc("Fine_W1_30.000", "Fine_Acme_30.000", "1", "1.5") +
                arc("Fine_W1_30.000", "Fine_Acme_30.000", "2", "1.5") +
                arc("Fine_W1_30.000", "Fine_Acme_30.000", "3", "1.5"));
  EXPECT_EQ(row_, 0U);
  EXPECT_EQ(log_.str(), "");
}

TEST_F(FreightArcs, WithDelayPassThroughANodeForEveryModeAtOneY) {
  row_ = 4;
  const std::string at = " <x> 910 <y> 80";
  EXPECT_EQ(freight("Acme,North,Truck,80,0.5\nAcme,North,Rail,40,2\n"),
            delayed("Rail_Fine_Acme_30.000", at, "2", "1", "1.5") +
                delayed("Rail_Fine_Acme_30.000", "", "2", "2", "1.5") +
                delayed("Rail_Fine_Acme_30.000", "", "2", "3", "1.5") +
                delayed("Truck_Fine_Acme_30.000", at, "0.5", "1", "3") +
                delayed("Truck_Fine_Acme_30.000", "", "0.5", "2", "3") +
                delayed("Truck_Fine_Acme_30.000", "", "0.5", "3", "3"));
  EXPECT_EQ(row_, 5U);
}

TEST_F(FreightArcs, OfDelayNodesStandFurtherRightWithBatch) {
  settings_.batch = true;
  EXPECT_THAT(freight("Acme,North,Rail,40,1\n"), HasSubstr(" <x> 1200 <y> 0 <periodstodelay> 1"));
}

TEST_F(FreightArcs, WithoutARateForCustomerAndMillAreMissingAndTheLogSaysSo) {
  EXPECT_EQ(freight("Acme,South,Rail,40,1\nBrown,North,Rail,40,1\n"), "");
  EXPECT_EQ(log_.str(), "No freight rates for: Acme - North.\n");
  EXPECT_EQ(row_, 0U);
}

TEST_F(FreightArcs, FromACutterOfAnotherGradeAreMissingInSilence) {
  EXPECT_EQ(freight("Acme,North,Rail,40,1\n", "Board"), "");
  EXPECT_EQ(log_.str(), "");
  EXPECT_EQ(row_, 0U);
}

TEST_F(FreightArcs, OfAnOrderOfAnUnplannedGradeAreMissingInSilence) {
  Mill mill("North,W1,Bond,100,1,1,1\n", kOrders, "");
  const ModelData data(mill.data(), sets_, settings_);
  Order order;
  order.grade = "Bond";
  EXPECT_EQ(write(data,
                  [&](const ModelData &, ImportFile &file) {
                    writeOrderFreight(data, file, *data.planning.cuttersOf("Bond").front(), order,
                                      row_, log_);
                  }),
            "");
  EXPECT_EQ(log_.str(), "");
}

TEST_F(FreightArcs, CostARateOf40AndTwoAndAHalfPoundsAnInchOver30InchesOneAndAHalf) {
  EXPECT_EQ(cost("Acme,North,Rail,40,1\n", "Rail"), 1.5);
}

TEST_F(FreightArcs, CostNothingByAModeWithoutARate) {
  EXPECT_EQ(cost("Acme,North,Rail,40,1\nAcme,South,Truck,40,1\n", "Truck"), 0);
}

TEST_F(FreightArcs, AreCostedInTheOrderRateThenPoundsThenWidth) {
  Mill mill("North,W1,Fine,100,1,0.7,1\n", "1,Fine,30.1,7,Acme\n", "Acme,North,Rail,33.3,1\n");
  const ModelData data(mill.data(), sets_, settings_);
  const double literal = ((33.3 / 2000.0) * 0.7) * 30.1;
  EXPECT_EQ(freightCost(data, *data.planning.cuttersOf("Fine").front(), fineOrder(data), "Rail"),
            literal);
}

}  // namespace
}  // namespace corvane
