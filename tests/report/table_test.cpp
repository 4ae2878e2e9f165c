#include "report/table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace corvane::report {
namespace {

using testing::HasSubstr;
using testing::Not;

Table Example() {
  return {
      "example",
      QStringLiteral("What & why"),
      {{QStringLiteral("Name"), false}, {QStringLiteral("Rolls")}, {QStringLiteral("Note"), false}},
      {{{Cell::ofText(QStringLiteral("All")), Cell::ofNumber(3000.25, 1)}}},
      {{{Cell::ofText(QStringLiteral("<b>")), Cell::ofNumber(3000.25, 1).as("bad"),
         Cell::ofText(QStringLiteral("a, \"b\""))}},
       {{Cell::ofText(QStringLiteral("c")), Cell::ofCount(0, 1)}, "u"}},
      Table::Use::kLong};
}

TEST(Table, HasACaptionAndScopes) {
  const std::string html = toHtml(Example()).toStdString();
  EXPECT_THAT(html, HasSubstr("<caption id=example-caption>What &amp; why</caption>"));
  EXPECT_THAT(html, HasSubstr("<th scope=col class=t>Name<th scope=col>Rolls"));
  EXPECT_THAT(html, HasSubstr("<th scope=row>c"));
}

TEST(Table, ABoxThatScrollsCanBeReachedByKeyAndHasAName) {
  EXPECT_THAT(toHtml(Example()).toStdString(),
              HasSubstr("role=region tabindex=0 aria-labelledby=example-caption"));
}

TEST(Table, TextsAreEscaped) {
  const std::string html = toHtml(Example()).toStdString();
  EXPECT_THAT(html, HasSubstr("<th scope=row>&lt;b&gt;"));
  EXPECT_THAT(html, HasSubstr("<td class=t>a, &quot;b&quot;"));
}

TEST(Table, TotalsStandFirstInABodyOfTheirOwn) {
  const std::string html = toHtml(Example()).toStdString();
  EXPECT_LT(html.find("<tbody class=total>"), html.find("<tbody>"));
  EXPECT_THAT(html, HasSubstr("<tbody class=total>\n<tr><th scope=row>All<td>3,000.3"));
}

TEST(Table, LooksAreClasses) {
  const std::string html = toHtml(Example()).toStdString();
  EXPECT_THAT(html, HasSubstr("<td class=bad>3,000.3"));
  EXPECT_THAT(html, HasSubstr("<tr class=u>"));
  EXPECT_THAT(html, HasSubstr("class=\"sorted long slim\""));
}

TEST(Table, PicturesAreNotEscaped) {
  Table table = Example();
  table.rows[0].cells[1] = Cell().with("<svg></svg>");
  EXPECT_THAT(toHtml(table).toStdString(), HasSubstr("<svg></svg>"));
}

TEST(Table, ItsCsvHasFullNumbersAndNoTotals) {
  std::ostringstream out;
  writeCsv(Example(), out);
  EXPECT_EQ(out.str(), "Name,Rolls,Note\r\n<b>,3000.25,\"a, \"\"b\"\"\"\r\nc,,\r\n");
}

}  // namespace
}  // namespace corvane::report
