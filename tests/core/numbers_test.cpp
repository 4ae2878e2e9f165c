#include "core/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace corvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct IntegerCase {
  const char *text;
  qint32 value;
};

TEST(ParameterInteger, IsADecimalIntegerOfThirtyTwoBitsOrZero) {
  const IntegerCase cases[] = {
      {"0", 0},
      {"7", 7},
      {"+7", 7},
      {"-5", -5},
      {" 12 ", 12},
      {"\t12", 12},
      {"007", 7},
      {"-0", 0},
      {"2147483647", INT_MAX},
      {"2147483648", 0},
      {"-2147483648", INT_MIN},
      {"-2147483649", 0},
      {"99999999999999999999", 0},
      {"", 0},
      {" ", 0},
      {"abc", 0},
      {"12abc", 0},
      {"1.5", 0},
      {"1e3", 0},
      {"0x10", 0},
      {"1 2", 0},
      {"1,000", 0},
      {"--5", 0},
      {"+", 0},
      {"- 5", 0},
      {"nan", 0},
  };
  for (const IntegerCase &item : cases) {
    EXPECT_EQ(parameterInteger(item.text), item.value) << '"' << item.text << '"';
  }
}

struct FloatCase {
  const char *text;
  double value;
};

TEST(ParameterFloat, IsADecimalNumberOfSinglePrecisionOrZero) {
  const FloatCase cases[] = {
      {"5", 5},     {"5.0", 5},   {"-2.5", -2.5}, {"+2.5", 2.5}, {" 2.5 ", 2.5},  {".5", 0.5},
      {"5.", 5},    {"1e2", 100}, {"1E2", 100},   {"1e+2", 100}, {"0", 0},        {"", 0},
      {"  ", 0},    {"abc", 0},   {"5abc", 0},    {"5%", 0},     {"1e", 0},       {"1,5", 0},
      {"1 5", 0},   {"nan", 0},   {"inf", 0},     {"-inf", 0},   {"infinity", 0}, {"0x10", 0},
      {"0x1p3", 0}, {"1e39", 0},  {"-1e39", 0},   {"1e308", 0},  {"1e999", 0},    {"1e-320", 0},
      {"--5", 0},
  };
  for (const FloatCase &item : cases) {
    EXPECT_EQ(parameterFloat(item.text), item.value) << '"' << item.text << '"';
  }
}

TEST(ParameterFloat, IsRoundedToSinglePrecisionAndWidened) {
  EXPECT_EQ(parameterFloat("5.1"), static_cast<double>(5.1F));
  EXPECT_NE(parameterFloat("5.1"), 5.1);
  EXPECT_EQ(parameterFloat("0.1"), static_cast<double>(0.1F));
  EXPECT_EQ(parameterFloat("3.4028234e38"), static_cast<double>(3.4028234e38F));
}

TEST(LeadingNumber, TakesTheNumberInFrontAndIgnoresTheRest) {
  const FloatCase cases[] = {
      {"30", 30},
      {"30.125", 30.125},
      {"30in", 30},
      {"  30", 30},
      {"+30", 30},
      {"-30", -30},
      {".5", 0.5},
      {"1e2x", 100},
      {"1e", 1},
      {"1.5.5", 1.5},
      {"", 0},
      {"abc", 0},
      {"x30", 0},
      {"-", 0},
      {"30,5", 30},
      {"0x10", 16},
      {"inf", kInfinity},
      {"-inf", -kInfinity},
      {"1e308", 1e308},
      {"1e309", kInfinity},
      {"1e-320", 1e-320},
      {"1e-400", 0},
      {"2147483648", 2147483648.0},
  };
  for (const FloatCase &item : cases) {
    EXPECT_EQ(leadingNumber(item.text), item.value) << '"' << item.text << '"';
  }
  EXPECT_EQ(leadingNumber(std::string(400, '9').c_str()), kInfinity);
  EXPECT_EQ(leadingNumber((std::string(400, '0') + "7").c_str()), 7);
  EXPECT_TRUE(std::isnan(leadingNumber("nan")));
  EXPECT_TRUE(std::signbit(leadingNumber("-0")));
}

TEST(LeadingInteger, TakesTheIntegerInFrontAndStaysWithinThirtyTwoBits) {
  const IntegerCase cases[] = {
      {"10", 10},
      {"10.9", 10},
      {"10rolls", 10},
      {"  10", 10},
      {"+10", 10},
      {"+-10", 0},
      {"-+10", 0},
      {"++10", 0},
      {"+", 0},
      {"- 10", 0},
      {"\t\n\v\f\r 10", 10},
      {"\t-10", -10},
      {"-3", -3},
      {"-0", 0},
      {"", 0},
      {"ten", 0},
      {"0x10", 0},
      {"1e5", 1},
      {"nan", 0},
      {"inf", 0},
      {"123456789", 123456789},
      {"999999999x", 999999999},
      {"1234567890", 1234567890},
      {"0000000000012", 12},
      {"000000000", 0},
      {"2147483647", INT_MAX},
      {"2147483648", INT_MAX},
      {"99999999999999999999", INT_MAX},
      {"-2147483648", INT_MIN},
      {"-2147483649", INT_MIN},
      {"-99999999999999999999", INT_MIN},
  };
  for (const IntegerCase &item : cases) {
    EXPECT_EQ(leadingInteger(item.text), item.value) << '"' << item.text << '"';
  }
}

TEST(SaturatedSum, StaysAtTheLargestThirtyTwoBitValue) {
  EXPECT_EQ(saturatedSum(10, 20), 30);
  EXPECT_EQ(saturatedSum(0, 0), 0);
  EXPECT_EQ(saturatedSum(INT_MAX, 0), INT_MAX);
  EXPECT_EQ(saturatedSum(INT_MAX - 1, 1), INT_MAX);
  EXPECT_EQ(saturatedSum(INT_MAX, 1), INT_MAX);
  EXPECT_EQ(saturatedSum(INT_MAX, INT_MAX), INT_MAX);
}

std::string printed(const char *format, double value) {
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, format, value);
  return buffer;
}

void expectAsPrinted(double value) {
  ASSERT_EQ(general(value), printed("%g", value));
  ASSERT_EQ(fixed(value, 3), printed("%.3f", value));
  ASSERT_EQ(fixed(value, 0), printed("%.0f", value));
}

TEST(NumberFormat, SpecialValuesPrintAsTheStandardLibraryPrintsThem) {
  using Limits = std::numeric_limits<double>;
  for (const double value : {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.5,
                             1.5,
                             2.5,
                             0.0005,
                             0.0015,
                             30.0625,
                             1e5,
                             999999.0,
                             999999.5,
                             1e6,
                             1e-4,
                             9.9999e-5,
                             1e308,
                             1e-320,
                             2147483647.0,
                             2147483648.0,
                             Limits::max(),
                             Limits::lowest(),
                             Limits::min(),
                             Limits::denorm_min(),
                             Limits::epsilon(),
                             kInfinity,
                             -kInfinity,
                             Limits::quiet_NaN(),
                             -Limits::quiet_NaN()}) {
    expectAsPrinted(value);
  }
}

TEST(NumberFormat, AnyDoublePrintsAsTheStandardLibraryPrintsIt) {
  std::mt19937_64 random(2024);
  for (int at = 0; at < 30000; ++at) {
    expectAsPrinted(std::bit_cast<double>(random()));
  }
}

TEST(NumberFormat, NumbersOfEverydaySizePrintAsTheStandardLibraryPrintsThem) {
  std::mt19937_64 random(2025);
  std::uniform_real_distribution<double> mantissa(-1, 1);
  for (int at = 0; at < 30000; ++at) {
    const double scaled = std::ldexp(mantissa(random), static_cast<int>(random() % 60) - 20);
    expectAsPrinted(scaled);
    expectAsPrinted(std::round(scaled * 8) / 8);  // eighths of an inch
    expectAsPrinted(std::round(scaled * 1000) / 1000 + 0.0005);
  }
}

TEST(NumberFormat, DecimalsAreThoseAskedFor) {
  EXPECT_EQ(fixed(1.0 / 3, 9), "0.333333333");
  EXPECT_EQ(fixed(std::numeric_limits<double>::lowest(), 9),
            printed("%.9f", std::numeric_limits<double>::lowest()));
}

TEST(NumberFormat, SixSignificantDigitsAndNoTrailingZeros) {
  EXPECT_EQ(general(14), "14");
  EXPECT_EQ(general(12.50), "12.5");
  EXPECT_EQ(general(1234567), "1.23457e+06");
}

TEST(NumberFormat, AppendingKeepsTheTextInFront) {
  std::string text = "w ";
  appendGeneral(text, 2.5);
  text += " ";
  appendFixed(text, 2.5, 2);
  text += " ";
  appendInteger(text, -9223372036854775807LL - 1);
  EXPECT_EQ(text, "w 2.5 2.50 -9223372036854775808");
}

}  // namespace
}  // namespace corvane
