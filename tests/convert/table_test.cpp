#include "convert/table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

using testing::ElementsAre;

Table parse(const char *text) {
  return parseTable(QString::fromUtf8(text), QLatin1Char(','));
}

TEST(ParseTable, SplitsRowsByAnyLineEnd) {
  const Table table = parse("a,b\r\nc,d\re,f\ng,h");
  ASSERT_EQ(table.rows.size(), 4U);
  EXPECT_EQ(table.rows[0].cells, (QStringList{"a", "b"}));
  EXPECT_EQ(table.rows[3].cells, (QStringList{"g", "h"}));
  EXPECT_EQ(table.rows[3].line, 4);
}

TEST(ParseTable, KeepsDelimitersQuotesAndLineEndsInQuotes) {
  const Table table = parse("\"a,b\",\"the \"\"B\"\" box\",\"two\nlines\",\"\"\nnext\n");
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.rows[0].cells, (QStringList{"a,b", "the \"B\" box", "two\nlines", ""}));
  EXPECT_EQ(table.rows[1].line, 3);
}

TEST(ParseTable, LeavesOutEmptyRowsAndKeepsEmptyCells) {
  const Table table = parse("\n,,\na,,b\n \n");
  ASSERT_EQ(table.rows.size(), 1U);
  EXPECT_EQ(table.rows[0].cells, (QStringList{"a", "", "b"}));
  EXPECT_EQ(table.rows[0].line, 3);
}

TEST(ParseTable, SaysWhereAQuoteIsNeverClosed) {
  const Table table = parse("a,b\nc,\"d\ne\n");
  ASSERT_TRUE(table.fault);
  EXPECT_EQ(table.fault->line, 2);
}

TEST(ParseTable, RefusesTextBehindAClosingQuote) {
  EXPECT_TRUE(parse("\"a\"b,c\n").fault);
  EXPECT_FALSE(parse("a\"b,c\n").fault);
}

TEST(ParseTable, TakesAnEmptyText) {
  EXPECT_TRUE(parse("").rows.empty());
  EXPECT_FALSE(parse("").fault);
}

}  // namespace
}  // namespace corvane::convert
