#include "report/html.h"

#include <gtest/gtest.h>

namespace corvane::report {
namespace {

TEST(Html, EscapesWhatHasAMeaningInAPage) {
  EXPECT_EQ(escaped(QStringLiteral("<script>alert(\"1\" & '2')</script>")),
            "&lt;script&gt;alert(&quot;1&quot; &amp; '2')&lt;/script&gt;");
  EXPECT_EQ(escaped(QStringLiteral("Müller")), "Müller");
  EXPECT_EQ(escaped(QString(QChar(0))), "\xEF\xBF\xBD");
}

TEST(Html, GroupsThousands) {
  EXPECT_EQ(grouped(0, 0), QStringLiteral("0"));
  EXPECT_EQ(grouped(999.96, 1), QStringLiteral("1,000.0"));
  EXPECT_EQ(grouped(1234567.891, 2), QStringLiteral("1,234,567.89"));
  EXPECT_EQ(grouped(-1234.5, 1), QStringLiteral("−1,234.5"));
  EXPECT_EQ(grouped(-0.001, 2), QStringLiteral("0.00"));
}

TEST(Html, PlainNumbersHaveNoZerosAtTheEnd) {
  EXPECT_EQ(plain(57.375), QStringLiteral("57.375"));
  EXPECT_EQ(plain(124), QStringLiteral("124"));
  EXPECT_EQ(plain(1200.50), QStringLiteral("1,200.5"));
  EXPECT_EQ(plain(-3), QStringLiteral("−3"));
  EXPECT_EQ(plain(-0.0001), QStringLiteral("0"));
}

TEST(Html, ChangesHaveTheirSignAndZeroHasNone) {
  EXPECT_EQ(change(44218.4, 0), QStringLiteral("+44,218"));
  EXPECT_EQ(change(-0.064, 3), QStringLiteral("−0.064"));
  EXPECT_EQ(change(-0.0004, 3), QStringLiteral("0"));
  EXPECT_EQ(change(0, 1), QStringLiteral("0"));
}

TEST(Html, PlacesOfPicturesAreShort) {
  EXPECT_EQ(coordinate(12.345), "12.3");
  EXPECT_EQ(coordinate(100), "100");
}

}  // namespace
}  // namespace corvane::report
