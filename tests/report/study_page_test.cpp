#include "report/study_page.h"

#include <gmock/gmock.h>

namespace corvane::report {
namespace {

using testing::HasSubstr;
using testing::Not;

// Two seeds by two values, a run that failed, and the patterns of all.
constexpr const char *kStudy = R"({"schema": "corvane-study/1", "mill": "three_mills",
"varies": {"rand num gen seed": ["1", "2"], "order file": ["/in/a.data", "/in/b.data"]},
"runs": [
{"run": "r1", "settings": {"rand num gen seed": "2", "order file": "/in/a.data"}, "data": "d1",
 "state": "done", "cost_total": 1000, "cost_freight": 800, "cost_surplus": 0, "trim_percent": 0.5,
 "unmet_rolls": 0, "patterns": 4321, "seconds": 1.25, "message": ""},
{"run": "r2", "settings": {"rand num gen seed": "1", "order file": "/in/a.data"}, "data": "d1",
 "state": "done", "cost_total": 1100, "cost_freight": 900, "cost_surplus": 0, "trim_percent": 0.75,
 "unmet_rolls": 2.5, "patterns": 16, "seconds": 1, "message": ""},
{"run": "r3", "settings": {"rand num gen seed": "1", "order file": "/in/b.data"}, "data": "d2",
 "state": "done", "cost_total": 1400, "cost_freight": 1200, "cost_surplus": 0, "trim_percent": 1,
 "unmet_rolls": 3, "patterns": 17, "seconds": 1, "message": ""},
{"run": "r4", "settings": {"rand num gen seed": "2", "order file": "/in/b.data"}, "data": "d2",
 "state": "failed", "seconds": 1, "message": "Error: <none>"}],
"pooled": [{"data": "d1", "runs": 2, "state": "done", "cost_total": 950, "cost_freight": 770,
 "deckle_inches": 1000, "trim_inches": 4, "unmet_rolls": 0},
 {"data": "d2", "runs": 2, "state": "failed"}]})";

StudyRecord Study(QByteArray json = kStudy) {
  StudyRecord study = studyFromJson(json).value();
  study.name = QStringLiteral("seeds-study");
  return study;
}

Table TableOf(const StudyRecord &study, const char *id) {
  for (Table &table : studyTables(study)) {
    if (table.id == id) {
      return table;
    }
  }
  return {};
}

std::vector<std::string> TextsOf(const Row &row) {
  std::vector<std::string> texts;
  for (const Cell &cell : row.cells) {
    texts.push_back(cell.text.toStdString());
  }
  return texts;
}

// What is shown, without style and script.
std::string Shown(const StudyRecord &study) {
  const std::string html = studyPage(study, QStringLiteral("1.0")).toStdString();
  const std::size_t start = html.find("<body>");
  return html.substr(start, html.find("<script") - start);
}

std::vector<std::string> HeadsOf(const Table &table) {
  std::vector<std::string> heads;
  for (const Column &column : table.columns) {
    heads.push_back(column.head.toStdString());
  }
  return heads;
}

TEST(StudyPage, ReadsStudiesAlone) {
  EXPECT_FALSE(studyFromJson("{\"schema\": \"corvane-run/1\"}"));
  EXPECT_FALSE(studyFromJson("{\"schema\": \"corvane-study/2\", \"runs\": []}"));
  EXPECT_FALSE(studyFromJson("corvane-study/1"));
  EXPECT_FALSE(studyFromJson(""));
}

TEST(StudyPage, ShowsEveryDoneRunWithItsFigures) {
  const Table table = TableOf(Study(), "study-runs");
  EXPECT_THAT(HeadsOf(table),
              testing::ElementsAre("Run", "Order file", "Seed", "Cost", "Above the best, %",
                                   "Freight", "Trim, %", "Rolls short", "Patterns", "Seconds"));
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_THAT(TextsOf(table.rows[0]), testing::ElementsAre("r1", "a.data", "2", "1,000", "0.00",
                                                           "800", "0.50", "0", "4,321", "1.25"));
  EXPECT_THAT(TextsOf(table.rows[1]), testing::ElementsAre("r2", "a.data", "1", "1,100", "10.00",
                                                           "900", "0.75", "2.5", "16", "1.00"));
  // The best of its own data, though others cost less.
  EXPECT_EQ(table.rows[2].cells[4].text, QStringLiteral("0.00"));
  EXPECT_EQ(table.use, Table::Use::kLong);
  EXPECT_EQ(table.rows[0].cells[0].link, "runs/r1/");
  EXPECT_FALSE(table.columns[1].isNumber);
  EXPECT_TRUE(table.columns[2].isNumber);
}

TEST(StudyPage, SetsBestWorstAndPooledOfEachDataSideBySide) {
  const Table table = TableOf(Study(), "study-compare");
  ASSERT_EQ(table.rows.size(), 4U);
  EXPECT_THAT(TextsOf(table.rows[0]), testing::ElementsAre("Best run", "order file a.data, seed 2",
                                                           "1,000", "0.00", "800", "0.50", "0"));
  EXPECT_THAT(TextsOf(table.rows[1]),
              testing::ElementsAre("Worst run", "order file a.data, seed 1", "1,100", "10.00",
                                   "900", "0.75", "2.5", "with the best"));
  EXPECT_EQ(table.rows[1].cells.back().link, "compare-d1.html");
  EXPECT_THAT(TextsOf(table.rows[2]), testing::ElementsAre("All patterns", "of 2 runs", "950",
                                                           "−5.00", "770", "0.40", "0"));
  // One run alone has nothing beside it, and a pooled plan that failed is none.
  EXPECT_EQ(table.rows[3].cells[0].text, QStringLiteral("Best run"));
}

TEST(StudyPage, TellsWhatEachSettingIsWorth) {
  const Table table = TableOf(Study(), "study-settings");
  ASSERT_EQ(table.rows.size(), 4U);
  EXPECT_THAT(TextsOf(table.rows[0]), testing::ElementsAre("order file", "a.data", "2", "1,000",
                                                           "1,050", "1,100", "", "1.3"));
  EXPECT_THAT(TextsOf(table.rows[1]), testing::ElementsAre("order file", "b.data", "1", "1,400",
                                                           "1,400", "1,400", "", "3"));
  EXPECT_EQ(table.rows[2].cells[1].text, QStringLiteral("2"));
  // From 1,000 to 1,100 of 1,000 to 1,400, the mean in the middle.
  EXPECT_THAT(table.rows[0].cells[6].picture.toStdString(), HasSubstr("d=\"M0 5h25\""));
  EXPECT_THAT(table.rows[0].cells[6].picture.toStdString(), HasSubstr("notch d=\"M12.5 5h1.5\""));
  EXPECT_THAT(table.rows[1].cells[6].picture.toStdString(), HasSubstr("d=\"M98.5 5h1.5\""));
}

TEST(StudyPage, OneThingThatVariesNeedsNoTableOfSettings) {
  StudyRecord study = Study();
  study.keys = QStringList("rand num gen seed");
  EXPECT_TRUE(TableOf(study, "study-settings").rows.empty());
}

TEST(StudyPage, ListsWhatFailed) {
  const Table table = TableOf(Study(), "study-failures");
  ASSERT_EQ(table.rows.size(), 1U);
  EXPECT_THAT(TextsOf(table.rows[0]),
              testing::ElementsAre("r4", "order file b.data, seed 2", "failed", "Error: <none>"));
}

TEST(StudyPage, SaysOnTopWhatCameOut) {
  const std::string html = Shown(Study());
  EXPECT_THAT(html, HasSubstr("<h1>Seeds-study</h1><p>a study of three_mills</p>"));
  EXPECT_THAT(html, HasSubstr("<b>1,000</b><span>cost of the best run</span>"));
  EXPECT_THAT(html, HasSubstr("from 1,000 to 1,400"));
  EXPECT_THAT(html, HasSubstr("<small>5.00 % less than the best run</small>"));
  EXPECT_THAT(html, HasSubstr("<li class=bad><b>3 of 4</b>"));
  EXPECT_THAT(html, HasSubstr("<th scope=row><a href=\"runs/r1/\">r1</a>"));
  EXPECT_THAT(html, HasSubstr("Error: &lt;none&gt;"));
}

TEST(StudyPage, TheTopTellsThePooledPlanOfTheBestRunsDataAlone) {
  StudyRecord study = Study();
  study.pools.push_back({QStringLiteral("d2"), 2, {{QStringLiteral("cost_total"), 1300}}});
  const std::string html = Shown(study);
  EXPECT_THAT(html, HasSubstr("<b>950</b><span>with the patterns of all runs</span>"));
  EXPECT_THAT(html, Not(HasSubstr("<b>1,300</b>")));
}

TEST(StudyPage, AStudyWithoutADoneRunMakesAPageToo) {
  StudyRecord study = Study();
  study.runs = {study.runs.back()};
  study.pools.clear();
  const std::string html = Shown(study);
  EXPECT_THAT(html, HasSubstr("<b>0 of 1</b>"));
  EXPECT_THAT(html, Not(HasSubstr("nan")));
  EXPECT_THAT(html, Not(HasSubstr("inf")));
}

}  // namespace
}  // namespace corvane::report
