#include "demand_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "good_files.h"

namespace corvane::import_checker {
namespace {

using testing::HasSubstr;

constexpr const char *kMachines = "Mill,C,G,100,46,2.5,12.5\n";
constexpr const char *kOrders = "1,G,30,5,A\n1,G,45,4,A\n2,G,30,6,A\n";

std::string differences(const std::string &orders, const std::string &machines = kMachines) {
  return describe(checkDemand(kDelayFile, {machines, orders}));
}

TEST(DemandCheck, OrdersAndDemandAgree) {
  EXPECT_EQ(differences(kOrders), "");
  EXPECT_EQ(describe(checkDemand(kBatchFile, {kMachines, kOrders})), "");
}

TEST(DemandCheck, ADifferenceIsNamedWithBothAmounts) {
  EXPECT_EQ(differences("1,G,30,5,A\n1,G,45,3,A\n2,G,30,6,A\n"),
            "whole file: \"G_A_45.000\" in period \"1\": ordered 3, demanded 4\n");
}

TEST(DemandCheck, AMissingOrderAndOneTooMany) {
  EXPECT_EQ(differences("1,G,30,5,A\n1,G,45,4,A\n2,G,45,6,A\n"),
            "whole file: \"G_A_30.000\" in period \"2\": ordered 0, demanded 6\n"
            "whole file: \"G_A_45.000\" in period \"2\": ordered 6, demanded 0\n");
}

TEST(DemandCheck, EqualOrdersAreOne) {
  EXPECT_EQ(differences("1,G,30,2,A\n1,G,45,4,A\n2,G,30,6,A\n1,G,30.0,3,A\n"), "");
}

TEST(DemandCheck, WhatTheReaderDropsIsNoDemand) {
  const std::string orders = std::string(kOrders) +
                             "1,G,0,5,A\n"      // no width
                             "1,G,30,0,A\n"     // no quantity
                             "1,G,30,5\n"       // no customer
                             "\n"               // nothing
                             "1,G,100.5,5,A\n"  // wider than the cutter
                             "1,H,30,5,A\n"     // a grade that no cutter runs
                             + "1,G,30,5,A" + std::string(1020, 'A') + "\n" +  // too long
                             "1,G,30,5,A";                                     // no line break
  EXPECT_EQ(differences(orders), "");
}

TEST(DemandCheck, RunsOfCommasAreOneAndSurplusFieldsAreIgnored) {
  EXPECT_EQ(differences(",,1,,G,30,5,A,x\r\n1,G,45,4,A\r\n2,G,30 in,6 rolls,A\r\n"), "");
}

TEST(DemandCheck, AnOrderAsWideAsTheCutterCanBeMade) {
  EXPECT_THAT(differences(std::string(kOrders) + "1,G,100,5,A\n"), HasSubstr("G_A_100.000"));
}

TEST(DemandCheck, TheFirstOfTwoEqualCuttersCounts) {
  const std::string wide = std::string(kOrders) + "1,G,110,5,A\n";
  EXPECT_EQ(differences(wide, std::string(kMachines) + "Mill,C,G,120,46,2.5,12.5\n"), "");
  EXPECT_THAT(differences(wide, std::string(kMachines) + "Mill,D,G,120,46,2.5,12.5\n"),
              HasSubstr("G_A_110.000"));
}

TEST(DemandCheck, NamesThatAreNoUtf8AreLatin1) {
  const std::string orders = "1,G,30,5,Caf\xE9\n1,G,30,5,Caf\xC3\xA8\n";
  const std::string text = differences(orders);
  EXPECT_THAT(text, HasSubstr("G_Caf\xC3\xA9_30.000"));
  EXPECT_THAT(text, HasSubstr("G_Caf\xC3\xA8_30.000"));
}

TEST(DemandCheck, MergedQuantitiesStayAtTheLargest32BitValue) {
  EXPECT_THAT(differences("1,G,30,2147483647,A\n1,G,30,99999999999,A\n"),
              HasSubstr("ordered 2147483647,"));
}

TEST(DemandCheck, InchesAreQuantityTimesWidth) {
  EXPECT_DOUBLE_EQ(orderedInches({kMachines, kOrders}), 5 * 30.0 + 4 * 45.0 + 6 * 30.0);
}

}  // namespace
}  // namespace corvane::import_checker
