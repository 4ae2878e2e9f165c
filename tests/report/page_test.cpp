#include "report/page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QRegularExpression>

#include "record/example_record.h"
#include "record/record_writer.h"

namespace corvane::report {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string PageOf(const record::Record &record, const PageOptions &options = {}) {
  return page(record, options).toStdString();
}

record::Record WithoutPlan() {
  record::Record record = record::exampleRecord();
  record.plan.reset();
  return record;
}

QString Between(const std::string &text, const QString &start, const QString &end) {
  const QString all = QString::fromStdString(text);
  const qsizetype from = all.indexOf(start) + start.size();
  return all.mid(from, all.indexOf(end, from) - from);
}

std::string HashOf(const QString &text) {
  return "'sha256-" +
         QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256)
             .toBase64()
             .toStdString() +
         "'";
}

TEST(Page, HoldsTheRecordByteForByte) {
  const record::Record record = record::exampleRecord();
  EXPECT_EQ(recordIn(page(record, {})), record::toJson(record));
  EXPECT_EQ(recordIn("<html>"), std::nullopt);
}

TEST(Page, TheSameRecordGivesTheSameBytes) {
  EXPECT_EQ(PageOf(record::exampleRecord()), PageOf(record::exampleRecord()));
}

TEST(Page, ItsPolicyAllowsNothingButItsOwnStyleAndScript) {
  const std::string html = PageOf(record::exampleRecord());
  const std::string policy =
      Between(html, QStringLiteral("Content-Security-Policy\" content=\""), QStringLiteral("\""))
          .toStdString();
  EXPECT_THAT(policy, HasSubstr("default-src 'none'"));
  EXPECT_THAT(policy, HasSubstr("style-src " + HashOf(Between(html, QStringLiteral("<style>"),
                                                              QStringLiteral("</style>")))));
  EXPECT_THAT(policy, HasSubstr("script-src " + HashOf(Between(html, QStringLiteral("<script>"),
                                                               QStringLiteral("</script>")))));
  EXPECT_THAT(policy, Not(HasSubstr("unsafe")));
}

TEST(Page, NamesNothingElsewhere) {
  const std::string html = PageOf(record::exampleRecord());
  for (const char *word : {"http:", "https:", "src=", "@import", "url(", "style=\""}) {
    EXPECT_THAT(html, Not(HasSubstr(word)));
  }
}

TEST(Page, ACustomerNamedLikeAScriptIsAName) {
  record::Record record = record::exampleRecord();
  const QString evil = QStringLiteral("</script><script>alert(1)</script>");
  record.name = evil;
  record.log.messages = {evil};
  record.log.started = evil;
  record.machines[0].name = record.machines[0].mill = evil;
  record.periods[0] = evil;
  record.plan->modes[0] = evil;
  record.plan->deliveries.back().reason = evil;
  record.plan->cost[0].name = evil;
  record.plan->warnings = {{evil, 1, evil}};
  record.parameters[0] = {evil, evil, evil};
  record.files[0].name = record.files[0].role = evil;
  record.findings[0] = {evil, evil, evil, 1, evil};
  for (record::Order &order : record.orders) {
    order.customer = order.name = evil;
  }
  for (record::Cutter &cutter : record.cutters) {
    cutter.grade = cutter.name = evil;
  }
  record::Record other = record;
  const QString html = QString::fromUtf8(page(record, {false, &other}));
  EXPECT_EQ(html.count(QStringLiteral("<script")), 2);
  EXPECT_EQ(html.count(QStringLiteral("</script")), 2);
}

TEST(Page, WithAPlanTrimIsShownAndAddsUp) {
  const std::string html = PageOf(record::exampleRecord());
  EXPECT_THAT(html, HasSubstr("<b>1.79 %</b><span>trim of the plan</span>"));
  EXPECT_THAT(html, HasSubstr("<th scope=row>Difference<td>0.00"));
}

TEST(Page, WhatIsShortIsNeverTakenForAllDelivered) {
  record::Record record = record::exampleRecord();
  record.orders[0].rolls = {20000, 10};
  for (record::Delivery &delivery : record.plan->deliveries) {
    delivery.delivered = delivery.order == 0 && delivery.period == 0 ? 20000 : delivery.delivered;
  }
  // 2 of more than 20,000 rolls.
  EXPECT_THAT(PageOf(record), HasSubstr("<b>99.9 %</b><span>of the rolls delivered</span>"));
}

TEST(Page, WithoutAPlanNoTrimFigureIsShown) {
  const std::string html = PageOf(WithoutPlan());
  const std::string text =
      html.substr(html.find("<body>"), html.find("<script") - html.find("<body>"));
  EXPECT_THAT(text, Not(HasSubstr("Trim")));
  EXPECT_THAT(text, Not(HasSubstr("trim of")));
  EXPECT_THAT(text, Not(HasSubstr(" %<")));
  EXPECT_THAT(text, HasSubstr("corvane-plan makes a plan"));
  EXPECT_THAT(text, HasSubstr("2 × 40, 1 × 20"));
}

TEST(Page, UsedOnlyLeavesOutTheOtherPatternsButNotInTheRecord) {
  const std::string all = PageOf(record::exampleRecord());
  const std::string used = PageOf(record::exampleRecord(), {true, nullptr});
  EXPECT_THAT(all, HasSubstr("<td>1 × 40<"));
  EXPECT_THAT(used, Not(HasSubstr("<td>1 × 40<")));
  EXPECT_THAT(used, HasSubstr("A_Pattern_2_W1_100"));
}

TEST(Page, UsedPatternsComeFirstThoseWithMostReelsAtTheTop) {
  const std::string html = PageOf(record::exampleRecord());
  const std::size_t first = html.find("<td>2 × 40, 1 × 20<");
  const std::size_t second = html.find("<td>3 × 30<");
  const std::size_t unused = html.find("<tr class=u>");
  EXPECT_LT(first, second);
  EXPECT_LT(second, unused);
  EXPECT_NE(unused, std::string::npos);
}

// The faults that a picture by place would have: 40 is the first width of one pattern and the only
// one of another, 20 comes behind it.
TEST(Page, AWidthHasOneColorThroughoutAGrade) {
  const std::string html = PageOf(record::exampleRecord());
  EXPECT_THAT(html,
              HasSubstr("<path class=c0 d=M0,14h287m1,0h287 /><path class=c2 d=M576,14h143 />"));
  EXPECT_THAT(html, HasSubstr("<path class=c1 d=M0,14h215m1,0h215m1,0h215 /><path class=c "
                              "d=M648,14h72 />"));
  EXPECT_THAT(html, HasSubstr("<path class=c0 d=M0,14h287 /><path class=c d=M288,14h432 />"));
}

TEST(Page, TheScaleIsThatOfTheWidestDeckle) {
  // 90 of 100 inches are 648 of 720.
  EXPECT_THAT(PageOf(record::exampleRecord()),
              HasSubstr("<path class=c0 d=M0,14h316m1,0h316 /><path class=c d=M634,14h14 />"));
}

TEST(Page, EveryTableCanBeWrittenAsAFileOfItsOwnName) {
  const record::Record other = record::exampleRecord();
  std::set<QByteArray> ids;
  for (const Table &table : allTables(record::exampleRecord(), {false, &other})) {
    EXPECT_TRUE(ids.insert(table.id).second) << table.id.toStdString();
    for (const Row &row : table.rows) {
      EXPECT_LE(row.cells.size(), table.columns.size()) << table.id.toStdString();
    }
  }
  EXPECT_TRUE(ids.contains("trim-by-grade"));
  EXPECT_TRUE(ids.contains("shipments"));
  EXPECT_TRUE(ids.contains("compare-figures"));
}

TEST(Page, AnEmptyRecordMakesAPageToo) {
  EXPECT_THAT(PageOf(record::Record()), HasSubstr("<h1>Run</h1>"));
}

}  // namespace
}  // namespace corvane::report
