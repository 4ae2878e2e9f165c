#include "convert/number_format.h"

#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

struct Case {
  const char *text;
  std::optional<double> withPoint;
  std::optional<double> withComma;

  friend void PrintTo(const Case &number, std::ostream *out) { *out << number.text; }
};

class Numbers : public testing::TestWithParam<Case> {};

TEST_P(Numbers, AreReadWithTheSignOfTheTable) {
  const QString text = QString::fromUtf8(GetParam().text);
  EXPECT_EQ(readNumber(text, DecimalSign::kPoint), GetParam().withPoint);
  EXPECT_EQ(readNumber(text, DecimalSign::kComma), GetParam().withComma);
}

constexpr std::nullopt_t kNone = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    All, Numbers,
    testing::Values(
        Case{"60", 60, 60}, Case{" 60 ", 60, 60}, Case{"-60", -60, -60}, Case{"+60", 60, 60},
        Case{"\u221260", -60, -60}, Case{"44.75", 44.75, kNone}, Case{"44,75", kNone, 44.75},
        Case{".5", 0.5, kNone}, Case{"5.", 5, kNone}, Case{"1,200", 1200, 1.2},
        Case{"1.200", 1.2, 1200}, Case{"1,200.5", 1200.5, kNone}, Case{"1.200,5", kNone, 1200.5},
        Case{"1,234,567", 1234567, kNone}, Case{"1 200", 1200, 1200}, Case{"1'200", 1200, 1200},
        Case{"1\u00a0200", 1200, 1200}, Case{"1\u202f200,5", kNone, 1200.5},
        Case{"12,00", kNone, 12}, Case{"1,2,3", kNone, kNone}, Case{"1,200 300", kNone, kNone},
        Case{"1'20", kNone, kNone}, Case{"1234,567", kNone, 1234.567}, Case{"2/2", kNone, kNone},
        Case{"42 1/2", 42.5, 42.5}, Case{"42-1/2", 42.5, 42.5}, Case{"42 - 1/2", 42.5, 42.5},
        Case{"1/2", 0.5, 0.5}, Case{"42\u00bd", 42.5, 42.5}, Case{"42 \u215c", 42.375, 42.375},
        Case{"\u00be", 0.75, 0.75}, Case{"-42 1/2", -42.5, -42.5}, Case{"421/2", kNone, kNone},
        Case{"42 3/2", kNone, kNone}, Case{"3/2", kNone, kNone}, Case{"1/0", kNone, kNone},
        Case{"$18.50", 18.5, kNone}, Case{"18,50 \u20ac", kNone, 18.5}, Case{"1e3", kNone, kNone},
        Case{"0x1F", kNone, kNone}, Case{"nan", kNone, kNone}, Case{"inf", kNone, kNone},
        Case{"30 in", kNone, kNone}, Case{"25%", kNone, kNone}, Case{"", kNone, kNone},
        Case{"-", kNone, kNone}, Case{".", kNone, kNone}, Case{"--5", kNone, kNone}));

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
