#include "sweep/study_table.h"

#include <QFileInfo>
#include <algorithm>
#include <ostream>
#include <set>
#include <tuple>

#include "core/text.h"
#include "formats/csv_writer.h"
#include "formats/json_writer.h"

namespace corvane::sweep {

namespace {

const QString kCost = QStringLiteral("cost_total");
const QString kUnmet = QStringLiteral("unmet_rolls");
const QString kCostPrefix = QStringLiteral("cost_");

const char *stateOf(const StudyRow &row) {
  return !row.result ? "missing" : (row.isDone() ? "done" : "failed");
}

// The plan's costs by kind, without the total, as the records of the runs name them.
std::vector<QString> costKinds(const std::vector<StudyRow> &rows) {
  std::set<QString> kinds;
  for (const StudyRow &row : rows) {
    if (row.isDone()) {
      for (const auto &[name, value] : row.result->figures) {
        if (name.startsWith(kCostPrefix) && name != kCost) {
          kinds.insert(name);
        }
      }
    }
  }
  return {kinds.begin(), kinds.end()};
}

double trimPercent(const RunResult &result) {
  const double paper = result.figure(QStringLiteral("deckle_inches"));
  return paper > 0 ? 100 * result.figure(QStringLiteral("trim_inches")) / paper : 0;
}

// The figures of a table, in the order of its columns, by name.
std::vector<std::pair<QString, double>> figuresOf(const RunResult &result,
                                                  const std::vector<QString> &kinds) {
  std::vector<std::pair<QString, double>> figures{{kCost, result.figure(kCost)}};
  for (const QString &kind : kinds) {
    figures.emplace_back(kind, result.figure(kind));
  }
  figures.emplace_back(QStringLiteral("trim_percent"), trimPercent(result));
  figures.emplace_back(kUnmet, result.figure(kUnmet));
  figures.emplace_back(QStringLiteral("patterns"), result.figure(QStringLiteral("patterns")));
  return figures;
}

void writeJsonRun(const Study &study, const StudyRow &row, const std::vector<QString> &kinds,
                  JsonWriter &json) {
  json.beginObject(JsonWriter::kOneLine);
  json.member("run", row.run.id);
  json.key("settings");
  json.beginObject();
  for (std::size_t i = 0; i < study.variations.size(); ++i) {
    json.member(utf8(study.variations[i].key), row.run.values[static_cast<qsizetype>(i)]);
  }
  json.endObject();
  json.member("data", row.run.dataId);
  json.member("state", stateOf(row));
  if (row.isDone()) {
    for (const auto &[name, value] : figuresOf(*row.result, kinds)) {
      json.member(utf8(name), value);
    }
  }
  if (row.result) {
    json.member("seconds", row.result->seconds);
    json.member("corvane_status", row.result->plannerStatus);
    json.member("plan_status", row.result->planStatus);
    json.member("message", row.result->message);
  }
  json.endObject();
}

void writeJsonPooled(const PooledPlan &plan, JsonWriter &json) {
  json.beginObject(JsonWriter::kOneLine);
  json.member("data", plan.dataId);
  json.member("runs", static_cast<qint64>(plan.runs));
  json.member("best_single_cost", plan.bestCost);
  json.member("best_single_unmet_rolls", plan.bestUnmet);
  json.member("state", plan.isDone ? "done" : "failed");
  if (plan.isDone) {
    for (const auto &[name, value] : plan.figures) {
      json.member(utf8(name), value);
    }
  }
  json.endObject();
}

}  // namespace

void sortBestFirst(std::vector<StudyRow> &rows) {
  const auto key = [](const StudyRow &row) {
    const int state = row.isDone() ? 0 : (row.result ? 1 : 2);
    return row.isDone() ? std::tuple(state, row.result->figure(kUnmet), row.result->figure(kCost))
                        : std::tuple(state, 0.0, 0.0);
  };
  std::stable_sort(rows.begin(), rows.end(),
                   [&key](const StudyRow &a, const StudyRow &b) { return key(a) < key(b); });
}

void writeStudyCsv(const Study &study, const std::vector<StudyRow> &rows, std::ostream &out) {
  CsvWriter csv(out);
  const std::vector<QString> kinds = costKinds(rows);
  const std::size_t figures = figuresOf({}, kinds).size();
  csv.field("run");
  for (const Variation &variation : study.variations) {
    csv.field(variation.key);
  }
  csv.field("state");
  for (const auto &[name, value] : figuresOf({}, kinds)) {
    csv.field(name);
  }
  csv.row("seconds", "corvane_status", "plan_status", "message");
  for (const StudyRow &row : rows) {
    csv.field(row.run.id);
    for (const QString &value : row.run.values) {
      csv.field(value);
    }
    csv.field(stateOf(row));
    const auto shown =
        row.isDone() ? figuresOf(*row.result, kinds) : std::vector<std::pair<QString, double>>();
    for (std::size_t i = 0; i < figures; ++i) {
      i < shown.size() ? csv.field(shown[i].second) : csv.field("");
    }
    const RunResult result = row.result.value_or(RunResult());
    csv.row(result.seconds, result.plannerStatus, result.planStatus, result.message);
  }
}

void writeStudyJson(const Study &study, const std::vector<StudyRow> &rows,
                    const std::vector<PooledPlan> &pooled, std::ostream &out) {
  const std::vector<QString> kinds = costKinds(rows);
  JsonWriter json(out);
  json.beginObject();
  json.member("schema", "corvane-study/1");
  json.member("mill", QFileInfo(study.mill).fileName());
  json.key("varies");
  json.beginObject();
  for (const Variation &variation : study.variations) {
    json.key(utf8(variation.key));
    json.beginArray(JsonWriter::kOneLine);
    for (const QString &value : variation.values) {
      json.value(value);
    }
    json.endArray();
  }
  json.endObject();
  json.key("runs");
  json.beginArray();
  for (const StudyRow &row : rows) {
    writeJsonRun(study, row, kinds, json);
  }
  json.endArray();
  json.key("pooled");
  json.beginArray();
  for (const PooledPlan &plan : pooled) {
    writeJsonPooled(plan, json);
  }
  json.endArray();
  json.endObject();
}

}  // namespace corvane::sweep
