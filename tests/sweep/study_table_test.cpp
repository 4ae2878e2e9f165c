#include "sweep/study_table.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <sstream>

namespace corvane::sweep {
namespace {

Study studyOfSeeds() {
  return {QStringLiteral("/in/a_mill"),
          {},
          {{QStringLiteral("rand num gen seed"), {"1", "2", "3", "4", "5"}}}};
}

StudyRow rowOf(const char *seed, std::optional<RunResult> result) {
  return {{{QString::fromUtf8(seed)}, QStringLiteral("id") + QString::fromUtf8(seed), "data"},
          std::move(result)};
}

RunResult done(double cost, double unmet) {
  return {0,
          0,
          1.5,
          {},
          {{"cost_total", cost},
           {"cost_freight", cost / 2},
           {"unmet_rolls", unmet},
           {"deckle_inches", 200},
           {"trim_inches", 3},
           {"patterns", 7}}};
}

std::vector<StudyRow> someRows() {
  return {rowOf("1", std::nullopt), rowOf("2", RunResult{1, -1, 0.5, "no, it failed", {}}),
          rowOf("3", done(100, 2)), rowOf("4", done(300, 0)), rowOf("5", done(200, 0))};
}

TEST(StudyTable, PutsTheBestFirstAndWhatFailedLast) {
  std::vector<StudyRow> rows = someRows();
  sortBestFirst(rows);
  QStringList seeds;
  for (const StudyRow &row : rows) {
    seeds << row.run.values[0];
  }
  EXPECT_EQ(seeds.join(","), QStringLiteral("5,4,3,2,1"));
}

TEST(StudyTable, WritesARowForEveryRun) {
  std::vector<StudyRow> rows = someRows();
  sortBestFirst(rows);
  std::ostringstream out;
  writeStudyCsv(studyOfSeeds(), rows, out);
  EXPECT_EQ(out.str(),
            "run,rand num gen seed,state,cost_total,cost_freight,trim_percent,unmet_rolls,patterns,"
            "seconds,corvane_status,plan_status,message\r\n"
            "id5,5,done,200,100,1.5,0,7,1.5,0,0,\r\n"
            "id4,4,done,300,150,1.5,0,7,1.5,0,0,\r\n"
            "id3,3,done,100,50,1.5,2,7,1.5,0,0,\r\n"
            "id2,2,failed,,,,,,0.5,1,-1,\"no, it failed\"\r\n"
            "id1,1,missing,,,,,,0,-1,-1,\r\n");
}

TEST(StudyTable, SaysTheSameInJson) {
  std::ostringstream out;
  const PooledPlan pooled{"data", 3, 200, 0, true, {{"cost_total", 190}}};
  writeStudyJson(studyOfSeeds(), someRows(), {pooled}, out);
  const QJsonObject study = QJsonDocument::fromJson(QByteArray::fromStdString(out.str())).object();
  EXPECT_EQ(study["schema"].toString(), QStringLiteral("corvane-study/1"));
  EXPECT_EQ(study["mill"].toString(), QStringLiteral("a_mill"));
  EXPECT_EQ(study["varies"]["rand num gen seed"].toArray().size(), 5);
  const QJsonArray runs = study["runs"].toArray();
  ASSERT_EQ(runs.size(), 5);
  EXPECT_EQ(runs[0]["data"].toString(), QStringLiteral("data"));
  EXPECT_EQ(runs[0]["state"].toString(), QStringLiteral("missing"));
  EXPECT_EQ(runs[1]["message"].toString(), QStringLiteral("no, it failed"));
  EXPECT_EQ(runs[2]["settings"]["rand num gen seed"].toString(), QStringLiteral("3"));
  EXPECT_EQ(runs[2]["cost_freight"].toDouble(), 50);
  EXPECT_EQ(study["pooled"][0]["cost_total"].toDouble(), 190);
  EXPECT_EQ(study["pooled"][0]["best_single_cost"].toDouble(), 200);
}

}  // namespace
}  // namespace corvane::sweep
