#include "convert/delimiter.h"

#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

const TableKind &Orders() {
  return tableKinds()[1];
}

TEST(SplitTable, FindsAHeaderInTheTenthLineAndNoneBelow) {
  const QString header = QStringLiteral("Week;Grade;Width;Quantity;Customer\n");
  const auto tenth = splitTable(QStringLiteral("title\n").repeated(9) + header, Orders(), {});
  ASSERT_TRUE(tenth);
  EXPECT_EQ(tenth->delimiter, QLatin1Char(';'));
  EXPECT_EQ(tenth->headerRow, 9U);
  const auto eleventh = splitTable(QStringLiteral("title\n").repeated(10) + header, Orders(), {});
  ASSERT_TRUE(eleventh);
  EXPECT_NE(eleventh->headerRow, 10U);
}

TEST(SplitTable, WithoutAHeaderTakesTheOneDelimiterThatGivesRegularRows) {
  TableRules rules;
  rules.hasHeader = false;
  for (int i = 0; i < 5; ++i) {
    rules.fields[QString::fromUtf8(Orders().fields[static_cast<std::size_t>(i)].name)].column =
        QStringLiteral("#%1").arg(i + 1);
  }
  const auto split = splitTable(QStringLiteral("1;A;30,5;5;X\n2;A;30;5;X\n"), Orders(), rules);
  ASSERT_TRUE(split);
  EXPECT_EQ(split->delimiter, QLatin1Char(';'));
  // Commas and semicolons alike.
  EXPECT_FALSE(splitTable(QStringLiteral("1,2;3,4;5,6;7,8;9\n"), Orders(), rules));
}

}  // namespace
}  // namespace corvane::convert
