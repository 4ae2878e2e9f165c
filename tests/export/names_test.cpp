#include "export/names.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

Cutter cutterOf(double width) {
  Cutter cutter;
  cutter.location = "North";
  cutter.name = "W1";
  cutter.grade = "Fine";
  cutter.width = width;
  return cutter;
}

Order orderOf(double width) {
  Order order;
  order.grade = "Fine";
  order.customerName = "Acme & Sons";
  order.width = width;
  return order;
}

TEST(Names, OfAMachineHoldTheCuttersName) {
  EXPECT_EQ(machineNodeName(cutterOf(100)), "\"M_W1\"");
}

TEST(Names, OfACutterHoldItsWidthWithoutDecimals) {
  EXPECT_EQ(cutterWidthName(cutterOf(100)), "\"Fine_W1_100\"");
  EXPECT_EQ(cutterWidthName(cutterOf(101.75)), "\"Fine_W1_102\"");
  // Halves go to the even neighbour.
  EXPECT_EQ(cutterWidthName(cutterOf(100.5)), "\"Fine_W1_100\"");
  EXPECT_EQ(cutterWidthName(cutterOf(1e22)), "\"Fine_W1_10000000000000000000000\"");
}

TEST(Names, OfACuttersStorageHoldTheDemandWidthWithThreeDecimals) {
  EXPECT_EQ(cutterValueName(cutterOf(100), 30), "\"Fine_W1_30.000\"");
  EXPECT_EQ(cutterValueName(cutterOf(100), 30.1256), "\"Fine_W1_30.126\"");
}

TEST(Names, OfACuttersSetHoldGradeAndName) {
  EXPECT_EQ(cutterSetName(cutterOf(100)), "\"Fine_W1\"");
}

TEST(Names, OfPatternsAndBatchesHoldIndexCutterAndDeckleWidth) {
  const PatternCompPattern set("Board", 101.75);
  EXPECT_EQ(batchNodeName(set, cutterOf(99), 0), "\"Board_Batch_0_W1_102\"");
  EXPECT_EQ(patternNodeName(set, cutterOf(99), 12), "\"Board_Pattern_12_W1_102\"");
}

TEST(Names, OfOrdersHoldCustomerAndWidthWithThreeDecimals) {
  EXPECT_EQ(orderNodeName(orderOf(30.5)), "\"Fine_Acme & Sons_30.500\"");
  EXPECT_EQ(orderSetName(orderOf(30.5)), "\"Fine_Acme & Sons\"");
}

TEST(Names, OfDelaysHoldModeAndOrder) {
  FreightRate rate;
  rate.mode = "Rail";
  EXPECT_EQ(delayNodeName(rate, orderOf(30.5)), "\"Rail_Fine_Acme & Sons_30.500\"");
}

TEST(Names, OfWasteNodesAndQuotedTextsAreUtf8) {
  EXPECT_EQ(wasteNodeName("Fine"), "\"Fine_Waste\"");
  EXPECT_EQ(wasteNodeName(QString::fromUtf8("Grüße")), "\"Grüße_Waste\"");
  EXPECT_EQ(quoted(QString::fromUtf8("März")), "\"März\"");
}

TEST(Names, KeepQuotationMarksAndBlanksAsTheyStand) {
  EXPECT_EQ(quoted("a \"b\""), "\"a \"b\"\"");
}

}  // namespace
}  // namespace corvane
