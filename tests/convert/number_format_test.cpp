#include "convert/number_format.h"

#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

struct NumberCase {
  const char *text;
  std::optional<double> withPoint;
  std::optional<double> withComma;

  friend void PrintTo(const NumberCase &number, std::ostream *out) { *out << number.text; }
};

class Numbers : public testing::TestWithParam<NumberCase> {};

TEST_P(Numbers, AreReadWithTheSignOfTheTable) {
  const QString text = QString::fromUtf8(GetParam().text);
  EXPECT_EQ(readNumber(text, DecimalSign::kPoint), GetParam().withPoint);
  EXPECT_EQ(readNumber(text, DecimalSign::kComma), GetParam().withComma);
}

constexpr std::nullopt_t kNone = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    All, Numbers,
    testing::Values(NumberCase{"60", 60, 60}, NumberCase{" 60 ", 60, 60},
                    NumberCase{"-60", -60, -60}, NumberCase{"+60", 60, 60},
                    NumberCase{"\u221260", -60, -60}, NumberCase{"44.75", 44.75, kNone},
                    NumberCase{"44,75", kNone, 44.75}, NumberCase{".5", 0.5, kNone},
                    NumberCase{"5.", 5, kNone}, NumberCase{"1,200", 1200, 1.2},
                    NumberCase{"1.200", 1.2, 1200}, NumberCase{"1,200.5", 1200.5, kNone},
                    NumberCase{"1.200,5", kNone, 1200.5}, NumberCase{"1,234,567", 1234567, kNone},
                    NumberCase{"1 200", 1200, 1200}, NumberCase{"1'200", 1200, 1200},
                    NumberCase{"1\u00a0200", 1200, 1200}, NumberCase{"1\u202f200,5", kNone, 1200.5},
                    NumberCase{"12,00", kNone, 12}, NumberCase{"1,2,3", kNone, kNone},
                    NumberCase{"1,200 300", kNone, kNone}, NumberCase{"1'20", kNone, kNone},
                    NumberCase{"1234,567", kNone, 1234.567}, NumberCase{"2/2", kNone, kNone},
                    NumberCase{"42 1/2", 42.5, 42.5}, NumberCase{"42-1/2", 42.5, 42.5},
                    NumberCase{"42 - 1/2", 42.5, 42.5}, NumberCase{"1/2", 0.5, 0.5},
                    NumberCase{"42\u00bd", 42.5, 42.5}, NumberCase{"42 \u215c", 42.375, 42.375},
                    NumberCase{"\u00be", 0.75, 0.75}, NumberCase{"-42 1/2", -42.5, -42.5},
                    NumberCase{"421/2", kNone, kNone}, NumberCase{"42 3/2", kNone, kNone},
                    NumberCase{"3/2", kNone, kNone}, NumberCase{"1/0", kNone, kNone},
                    NumberCase{"$18.50", 18.5, kNone}, NumberCase{"18,50 \u20ac", kNone, 18.5},
                    NumberCase{"1e3", kNone, kNone}, NumberCase{"0x1F", kNone, kNone},
                    NumberCase{"nan", kNone, kNone}, NumberCase{"inf", kNone, kNone},
                    NumberCase{"30 in", kNone, kNone}, NumberCase{"25%", kNone, kNone},
                    NumberCase{"", kNone, kNone}, NumberCase{"-", kNone, kNone},
                    NumberCase{".", kNone, kNone}, NumberCase{"--5", kNone, kNone}));

TEST(DecimalEvidence, KeepsTheFirstOfEachKind) {
  DecimalEvidence evidence;
  for (const char *text : {"60", "abc", "1,200", "44.75", "1,200.5"}) {
    gatherEvidence({QString::fromUtf8(text), 1, 1}, evidence);
  }
  ASSERT_TRUE(evidence.forPoint && evidence.ambiguous);
  EXPECT_EQ(evidence.forPoint->text, QStringLiteral("44.75"));
  EXPECT_EQ(evidence.ambiguous->text, QStringLiteral("1,200"));
  EXPECT_FALSE(evidence.forComma);
}

}  // namespace
}  // namespace corvane::convert
