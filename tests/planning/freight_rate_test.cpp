#include "planning/freight_rate.h"

#include <gtest/gtest.h>

#include <sstream>

namespace corvane {
namespace {

TEST(FreightRate, ANewOneHasEmptyTextsAndZeroNumbers) {
  const FreightRate rate;
  EXPECT_TRUE(rate.customer.isEmpty());
  EXPECT_TRUE(rate.mill.isEmpty());
  EXPECT_TRUE(rate.mode.isEmpty());
  EXPECT_EQ(rate.rate, 0);
  EXPECT_EQ(rate.delay, 0);
}

struct RatePair {
  FreightRate a;
  FreightRate b;
  int byKey;
  int byCustomerAndMill;
};

TEST(FreightRateComp, CustomerThenMillThenMode) {
  const RatePair pairs[] = {
      {{"A", "2", "2"}, {"B", "1", "1"}, -1, -1},
      {{"A", "1", "2"}, {"A", "2", "1"}, -1, -1},
      {{"A", "1", "1"}, {"A", "1", "2"}, -1, 0},
      {{"A", "1", "1", 5, 6}, {"A", "1", "1", 7, 8}, 0, 0},
      {{"a", "1", "1"}, {"B", "1", "1"}, 1, 1},
  };
  for (const RatePair &pair : pairs) {
    EXPECT_EQ(FreightRateComp().compare(pair.a, pair.b), pair.byKey);
    EXPECT_EQ(FreightRateComp().compare(pair.b, pair.a), -pair.byKey);
    EXPECT_EQ(FreightRateCustMillComp().compare(pair.a, pair.b), pair.byCustomerAndMill);
    EXPECT_EQ(FreightRateCustMillComp().compare(pair.b, pair.a), -pair.byCustomerAndMill);
  }
}

std::string printed(const FreightRate &rate) {
  std::ostringstream out;
  printFreightRate(out, rate);
  return out.str();
}

TEST(FreightRate, ThePrintedFormNamesEveryFieldAndHasNoLineEnd) {
  EXPECT_EQ(printed({"Acme", "North", "Rail", 12.5, 3}),
            "Customer: Acme Mill: North Mode: Rail Rate: 12.5 Delay: 3");
  EXPECT_EQ(printed({}), "Customer:  Mill:  Mode:  Rate: 0 Delay: 0");
}

TEST(FreightRate, ThePrintedNumbersHaveSixSignificantDigits) {
  EXPECT_EQ(printed({"A", "B", "C", 1234567, 0.000012345678}),
            "Customer: A Mill: B Mode: C Rate: 1.23457e+06 Delay: 1.23457e-05");
}

TEST(FreightRate, ThePrintedTextsAreUtf8) {
  EXPECT_EQ(printed({QStringLiteral("\u00c5se"), "B", "C", 1, 2}),
            "Customer: \xC3\x85se Mill: B Mode: C Rate: 1 Delay: 2");
}

}  // namespace
}  // namespace corvane
