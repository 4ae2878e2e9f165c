#include "formats/csv_writer.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace corvane {
namespace {

TEST(CsvWriter, QuotesOnlyWhereTheFieldNeedsIt) {
  std::ostringstream out;
  CsvWriter csv(out);
  csv.row("plain", "a,b", "the \"B\" box", "two\nlines", "cr\r", "");
  EXPECT_EQ(out.str(), "plain,\"a,b\",\"the \"\"B\"\" box\",\"two\nlines\",\"cr\r\",\r\n");
}

TEST(CsvWriter, WritesNumbersWithAPointAndNoMoreDigitsThanNeeded) {
  std::ostringstream out;
  CsvWriter csv(out);
  csv.row(0.1, 44.75, -3, qint64{5000000000}, std::numeric_limits<double>::infinity(), -0.0);
  EXPECT_EQ(out.str(), "0.1,44.75,-3,5000000000,,0\r\n");
}

TEST(CsvWriter, StartsEveryRowAfresh) {
  std::ostringstream out;
  CsvWriter csv(out);
  csv.field(QStringLiteral("M\u00fchle")).endRow();
  csv.field(1).field(2).endRow();
  EXPECT_EQ(out.str(), "M\u00fchle\r\n1,2\r\n");
}

}  // namespace
}  // namespace corvane
