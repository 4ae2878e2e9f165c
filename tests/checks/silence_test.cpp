// What is so near to a mistake that a check could tell of it, and is none; and figures in messages.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checks/checked_files.h"
#include "checks/near_names.h"

namespace corvane::checks {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

MillTexts changed(const std::string &file, const std::string &from, const std::string &to) {
  MillTexts texts = cleanMill();
  std::string &text = texts.of(file);
  EXPECT_NE(text.find(from), std::string::npos) << from;
  text.replace(text.find(from), from.size(), to);
  return texts;
}

std::vector<std::string> codesOf(const MillTexts &texts) {
  std::vector<std::string> codes;
  for (const Found &found : TextCheck(texts).found) {
    codes.push_back(found.code);
  }
  return codes;
}

TEST(Silence, ALeapOfPeriodsIsNoGap) {
  MillTexts texts = cleanMill();
  texts.orders += "50,LB42,44.75,10,Badger Box\n50,CM26,33.75,10,Clearwater Cartons\n";
  EXPECT_THAT(codesOf(texts), Not(Contains("CV414")));
}

TEST(Silence, FourTimesTheUsualQuantityIsNoSlip) {
  MillTexts texts = changed("orders", "36.5,40", "36.5,240");
  texts.orders += "2,LB42,30,60,Badger Box\n2,LB42,31,55,Badger Box\n2,LB42,32,50,Badger Box\n";
  EXPECT_THAT(codesOf(texts), Not(Contains("CV411")));
}

TEST(Silence, AModeIsSharedOnlyByMillsThatServeTheCustomer) {
  MillTexts texts = changed("orders", "2,LB42,27.25", "2,CM26,27.25");
  const std::string from = "Birch Landing,Truck,28,0";
  texts.rates.replace(texts.rates.find(from), from.size(), "Birch Landing,Truck,28,1");
  EXPECT_THAT(codesOf(texts), Not(Contains("CV506")));
}

TEST(Silence, WithoutDelayNothingIsLate) {
  MillTexts texts = changed("parameters", "batch=False", "delay=False");
  for (std::size_t at = texts.rates.find(",0\n"); at != std::string::npos;
       at = texts.rates.find(",0\n")) {
    texts.rates.replace(at, 3, ",1\n");
  }
  EXPECT_THAT(codesOf(texts), Not(Contains("CV509")));
}

TEST(Silence, NamesThatDifferInADigitAreMeantSo) {
  EXPECT_FALSE(differByOneLetter("Store 11", "Store 12"));
  EXPECT_TRUE(differByOneLetter("Badger Box", "Badger Bix"));
}

TEST(Figures, CapacityIsThatOfTheDaysOfAPeriod) {
  MillTexts texts = changed("orders", "44.75,60", "44.75,300");
  EXPECT_THAT(codesOf(texts), Not(Contains("CV410")));
  texts.parameters.replace(texts.parameters.find("period=7"), 8, "period=1");
  EXPECT_THAT(codesOf(texts), Contains("CV410"));
}

TEST(Figures, GenerationSeesTheFirstDemand) {
  const TextCheck check(changed("orders", "1,CM26", "1,LB42,44.75,80,Clearwater Cartons\n1,CM26"));
  ASSERT_EQ(check.found.size(), 1U);
  EXPECT_THAT(check.found[0].message, HasSubstr("of 6265 inches pattern generation sees 2685"));
}

TEST(Figures, ARateThatSaysTheSameIsAWarningAndAnotherAnError) {
  MillTexts same = cleanMill();
  same.rates += "Badger Box,Alder Falls,Rail,18.5,1\n";
  MillTexts other = cleanMill();
  other.rates += "Badger Box,Alder Falls,Rail,19,1\n";
  ASSERT_EQ(TextCheck(same).found.size(), 1U);
  EXPECT_EQ(TextCheck(same).found[0].severity, Severity::kWarning);
  EXPECT_EQ(TextCheck(other).found.at(0).severity, Severity::kError);
}

}  // namespace
}  // namespace corvane::checks
