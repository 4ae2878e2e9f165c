#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "record/example_record.h"
#include "report/sections.h"

namespace corvane::report {
namespace {

using testing::HasSubstr;

Comparison Compare(const record::Record &here, const record::Record &other) {
  const Figures hereFigures = figuresOf(here);
  const Figures otherFigures = figuresOf(other);
  return compare({here, hereFigures}, {other, otherFigures});
}

const Table &TableOf(const Comparison &comparison, const QByteArray &id) {
  for (const Table &table : comparison.tables) {
    if (table.id == id) {
      return table;
    }
  }
  static const Table kNone;
  ADD_FAILURE() << "no table " << id.toStdString();
  return kNone;
}

// The cells of the row of that head, as shown.
std::vector<std::string> RowOf(const Table &table, const QString &head) {
  std::vector<std::string> texts;
  for (const Row &row : table.rows) {
    if (row.cells.front().text == head) {
      for (const Cell &cell : row.cells) {
        texts.push_back(cell.text.toStdString());
      }
    }
  }
  return texts;
}

TEST(Comparison, WithItselfEveryChangeIsZero) {
  const record::Record record = record::exampleRecord();
  const Comparison comparison = Compare(record, record);
  EXPECT_EQ(comparison.tables.size(), 2U);  // no pattern and no setting differs
  for (const Table &table : comparison.tables) {
    EXPECT_FALSE(table.rows.empty());
    for (const Row &row : table.rows) {
      EXPECT_EQ(row.cells[3].number, 0) << row.cells[0].text.toStdString();
      EXPECT_EQ(row.cells[3].text, QStringLiteral("0"));
      EXPECT_STREQ(row.cells[3].look, "");
    }
  }
  EXPECT_THAT(comparison.summary.toStdString(),
              HasSubstr("4 patterns are in both, 0 only here, 0 only there"));
}

TEST(Comparison, CostsAreToldByCause) {
  const record::Record here = record::exampleRecord();
  record::Record other = here;
  other.plan->cost[2].value = 450;  // freight
  other.plan->cost.push_back({QStringLiteral("stock"), 7});
  other.plan->totalCost = 972;
  const Comparison comparison = Compare(here, other);
  const Table &table = TableOf(comparison, "compare-figures");
  EXPECT_EQ(RowOf(table, QStringLiteral("Cost of the plan")),
            (std::vector<std::string>{"Cost of the plan", "1,015", "972", "−43", "−4.2"}));
  EXPECT_EQ(RowOf(table, QStringLiteral("– freight")),
            (std::vector<std::string>{"– freight", "500", "450", "−50", "−10.0"}));
  EXPECT_EQ(RowOf(table, QStringLiteral("– stock")),
            (std::vector<std::string>{"– stock", "0", "7", "+7", ""}));
}

TEST(Comparison, LessCostIsGoodAndMoreIsBad) {
  record::Record other = record::exampleRecord();
  other.plan->totalCost = 972;
  const record::Record here = record::exampleRecord();
  EXPECT_STREQ(TableOf(Compare(here, other), "compare-figures").rows[0].cells[3].look, "good");
  EXPECT_STREQ(TableOf(Compare(other, here), "compare-figures").rows[0].cells[3].look, "bad");
}

TEST(Comparison, PatternsAreKnownByTheirCutNotByTheirName) {
  const record::Record here = record::exampleRecord();
  record::Record other = here;
  other.patterns[0].name = QStringLiteral("other");
  other.patterns[1].rolls = {{30, 2}, {20, 2}};
  other.patterns[1].trim = 0;
  const Comparison comparison = Compare(here, other);
  EXPECT_THAT(comparison.summary.toStdString(),
              HasSubstr("3 patterns are in both, 1 only here, 1 only there"));
  const Table &table = TableOf(comparison, "compare-patterns");
  ASSERT_EQ(table.rows.size(), 2U);
  const auto offered = [&](std::size_t row) { return table.rows[row].cells[3].text; };
  EXPECT_EQ(offered(0), QStringLiteral("only there"));
  EXPECT_EQ(offered(1), QStringLiteral("only here"));
  EXPECT_EQ(table.rows[1].cells[6].text, QStringLiteral("−3.0"));
}

TEST(Comparison, TheLargestChangeOfAPatternComesFirstMoreOrLess) {
  const record::Record here = record::exampleRecord();
  record::Record other = here;
  other.plan->reels = {{0, 0, 2}, {1, 0, 4}, {3, 0, 4}, {3, 1, 1.5}};
  const Comparison comparison = Compare(here, other);
  const Table &table = TableOf(comparison, "compare-patterns");
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.rows[0].cells[6].text, QStringLiteral("−13.0"));
  EXPECT_EQ(table.rows[1].cells[6].text, QStringLiteral("+1.0"));
}

TEST(Comparison, SettingsAndFilesThatDifferAreTold) {
  const record::Record here = record::exampleRecord();
  record::Record other = here;
  other.parameters[0].value = QStringLiteral("50");
  other.files[0].sha256 = QString(64, QLatin1Char('b'));
  other.log.seed = 8;
  const Comparison comparison = Compare(here, other);
  const Table &table = TableOf(comparison, "compare-settings");
  EXPECT_EQ(table.rows.size(), 3U);
  EXPECT_EQ(RowOf(table, QStringLiteral("occur min")),
            (std::vector<std::string>{"occur min", "2", "50"}));
  EXPECT_EQ(RowOf(table, QStringLiteral("seed in the log")),
            (std::vector<std::string>{"seed in the log", "7", "8"}));
}

TEST(Comparison, WithoutAPlanOnlyWhatNeedsNoneIsCompared) {
  record::Record other = record::exampleRecord();
  other.plan.reset();
  const Comparison comparison = Compare(record::exampleRecord(), other);
  EXPECT_EQ(RowOf(TableOf(comparison, "compare-figures"), QStringLiteral("Trim, in")),
            std::vector<std::string>());
  for (const Table &table : comparison.tables) {
    EXPECT_NE(table.id, "compare-patterns");
  }
  EXPECT_THAT(comparison.summary.toStdString(), HasSubstr("The other run has no plan"));
  EXPECT_THAT(Compare(other, record::exampleRecord()).summary.toStdString(),
              HasSubstr("This run has no plan"));
  EXPECT_THAT(Compare(other, other).summary.toStdString(), HasSubstr("Neither has a plan"));
}

TEST(Comparison, AChangeTooSmallToBeShownIsNeitherGoodNorBad) {
  const record::Record here = record::exampleRecord();
  record::Record other = here;
  other.plan->totalCost += 0.3;
  const Comparison comparison = Compare(here, other);
  for (const Row &row : TableOf(comparison, "compare-figures").rows) {
    for (const Cell &cell : row.cells) {
      EXPECT_STREQ(cell.look, "") << row.cells[0].text.toStdString();
    }
  }
}

}  // namespace
}  // namespace corvane::report
