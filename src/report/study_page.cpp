#include "report/study_page.h"

#include <algorithm>
#include <limits>
#include <set>

#include "report/document.h"
#include "report/html.h"

namespace corvane::report {

namespace {

const QString kCost = QStringLiteral("cost_total");
const QString kUnmet = QStringLiteral("unmet_rolls");
const QString kTrim = QStringLiteral("trim_percent");
const QString kPrefix = QStringLiteral("cost_");

// The costs of some runs.
struct Spread {
  int runs = 0;
  double least = std::numeric_limits<double>::infinity();
  double most = -std::numeric_limits<double>::infinity();
  double sum = 0;
  double unmet = 0;

  void add(const StudyRun &run) {
    const double cost = figureOf(run.figures, kCost);
    ++runs;
    least = std::min(least, cost);
    most = std::max(most, cost);
    sum += cost;
    unmet += figureOf(run.figures, kUnmet);
  }
  double mean() const { return sum / runs; }
};

// What a key of the study file is called on the page.
QString nameOfKey(const QString &key) {
  return key == QLatin1String("rand num gen seed") ? QStringLiteral("seed") : key;
}

QString capitalized(const QString &text) {
  return text.left(1).toUpper() + text.mid(1);
}

// A value as it is shown: of a file its name.
QString shownValue(const QString &value) {
  return value.mid(value.lastIndexOf(QLatin1Char('/')) + 1);
}

bool isNumber(const QString &value) {
  bool valid = false;
  value.toDouble(&valid);
  return valid;
}

// From the least to the most of the costs, the mean as a notch, on a track of all.
QByteArray spreadBar(const Spread &spread, const Spread &all) {
  const auto place = [&](double cost) {
    return all.most > all.least ? 100 * (cost - all.least) / (all.most - all.least) : 0;
  };
  // What has no length would not be seen.
  constexpr double kShortest = 1.5;
  const double from = std::min(place(spread.least), 100 - kShortest);
  const double length = std::max(place(spread.most) - from, kShortest);
  return "<svg class=\"bar wide\" viewBox=\"0 0 100 10\" preserveAspectRatio=none aria-hidden=true>"
         "<path class=track d=\"M0 5h100\"/><path class=part d=\"M" +
         coordinate(from) + " 5h" + coordinate(length) + "\"/><path class=notch d=\"M" +
         coordinate(std::min(place(spread.mean()), 100 - kShortest)) + " 5h1.5\"/></svg>";
}

class StudyTables {
 public:
  explicit StudyTables(const StudyRecord &study) : study_(study) {
    std::set<QString> kinds;
    for (const StudyRun &run : study.runs) {
      if (run.isDone()) {
        all_.add(run);
        done_[run.data].push_back(&run);
        for (const auto &[name, value] : run.figures) {
          if (name.startsWith(kPrefix) && name != kCost && value != 0) {
            kinds.insert(name);
          }
        }
      }
    }
    kinds_ = {kinds.begin(), kinds.end()};
  }

  const Spread &all() const { return all_; }

  std::vector<Table> tables() const {
    std::vector<Table> tables;
    for (Table table : {besides(), failures(), worths(), runs()}) {
      if (!table.rows.empty()) {
        tables.push_back(std::move(table));
      }
    }
    return tables;
  }

  // "freight +10%, seed 3"
  QString settingsOf(const StudyRun &run) const {
    QStringList words;
    for (qsizetype i = 0; i < study_.keys.size(); ++i) {
      words << nameOfKey(study_.keys[i]) + QLatin1Char(' ') + shownValue(run.settings.value(i));
    }
    return words.join(QLatin1String(", "));
  }

 private:
  void addCostColumns(std::vector<Column> &columns) const {
    columns.push_back({QStringLiteral("Cost")});
    columns.push_back({QStringLiteral("Above the best, %")});
    for (const QString &kind : kinds_) {
      QString head = kind.mid(kPrefix.size());
      head.replace(QLatin1Char('_'), QLatin1Char(' '));
      columns.push_back({capitalized(head)});
    }
    columns.push_back({QStringLiteral("Trim, %")});
    columns.push_back({QStringLiteral("Rolls short")});
  }

  void addCosts(std::vector<Cell> &cells, const StudyFigures &figures, double best) const {
    const double cost = figureOf(figures, kCost);
    cells.push_back(Cell::ofNumber(cost, 0));
    cells.push_back(best > 0 ? Cell::ofNumber(100 * (cost - best) / best, 2) : Cell());
    for (const QString &kind : kinds_) {
      cells.push_back(Cell::ofNumber(figureOf(figures, kind), 0));
    }
    cells.push_back(Cell::ofNumber(trimOf(figures), 2));
    const double unmet = figureOf(figures, kUnmet);
    cells.push_back(Cell::ofRolls(unmet).as(unmet > 0 ? "bad" : ""));
  }

  // The record of a pooled plan tells inches in place of the share.
  static double trimOf(const StudyFigures &figures) {
    const double paper = figureOf(figures, QStringLiteral("deckle_inches"));
    return paper > 0 ? 100 * figureOf(figures, QStringLiteral("trim_inches")) / paper
                     : figureOf(figures, kTrim);
  }

  // Of each data the best run, the worst, and the plan with the patterns of all.
  Table besides() const {
    Table table{"study-compare",
                done_.size() > 1
                    ? QStringLiteral("Best, worst and all patterns together, for each data. What "
                                     "reads other data is another task, not a better plan.")
                    : QStringLiteral("Best, worst and all patterns together"),
                {{QStringLiteral("Plan"), false}, {QStringLiteral("Settings"), false}},
                {},
                {},
                Table::Use::kInOrder};
    addCostColumns(table.columns);
    table.columns.push_back({QStringLiteral("Side by side"), false});
    for (const auto &[data, runs] : done_) {
      const double best = figureOf(runs.front()->figures, kCost);
      table.rows.push_back(besideRow(QStringLiteral("Best run"), settingsOf(*runs.front()),
                                     runs.front()->figures, best));
      if (runs.size() > 1) {
        Row worst = besideRow(QStringLiteral("Worst run"), settingsOf(*runs.back()),
                              runs.back()->figures, best);
        worst.cells.push_back(
            Cell::ofText(QStringLiteral("with the best")).to("compare-" + escaped(data) + ".html"));
        table.rows.push_back(std::move(worst));
      }
      for (const StudyPool &pool : study_.pools) {
        if (pool.data == data) {
          table.rows.push_back(besideRow(QStringLiteral("All patterns"),
                                         QStringLiteral("of %1 runs").arg(grouped(pool.runs, 0)),
                                         pool.figures, best));
        }
      }
    }
    return table;
  }

  Row besideRow(const QString &what, const QString &settings, const StudyFigures &figures,
                double best) const {
    Row row{{Cell::ofText(what), Cell::ofText(settings)}};
    addCosts(row.cells, figures, best);
    return row;
  }

  // Each value of what varies over all values of the rest. Where one thing alone varies the table
  // of runs says it.
  Table worths() const {
    Table table{"study-settings",
                QStringLiteral("Cost by setting, over all values of the others; the bar goes from "
                               "the best run to the worst, its notch is the mean"),
                {{QStringLiteral("Setting"), false},
                 {QStringLiteral("Value"), false},
                 {QStringLiteral("Runs")},
                 {QStringLiteral("Best")},
                 {QStringLiteral("Mean")},
                 {QStringLiteral("Worst")},
                 {QStringLiteral("From best to worst"), false},
                 {QStringLiteral("Rolls short, mean")}},
                {},
                {},
                Table::Use::kShort};
    for (qsizetype key = 0; study_.keys.size() > 1 && key < study_.keys.size(); ++key) {
      addWorths(table, key);
    }
    return table;
  }

  void addWorths(Table &table, qsizetype key) const {
    std::vector<std::pair<QString, Spread>> values;
    for (const StudyRun &run : study_.runs) {
      if (run.isDone()) {
        const QString value = run.settings.value(key);
        auto found = std::find_if(values.begin(), values.end(),
                                  [&](const auto &entry) { return entry.first == value; });
        if (found == values.end()) {
          found = values.insert(values.end(), {value, Spread()});
        }
        found->second.add(run);
      }
    }
    std::stable_sort(values.begin(), values.end(), [](const auto &a, const auto &b) {
      return a.second.mean() < b.second.mean();
    });
    for (const auto &[value, spread] : values) {
      table.rows.push_back(
          {{Cell::ofText(nameOfKey(study_.keys[key])), Cell::ofText(shownValue(value)),
            Cell::ofNumber(spread.runs, 0), Cell::ofNumber(spread.least, 0),
            Cell::ofNumber(spread.mean(), 0), Cell::ofNumber(spread.most, 0),
            Cell::ofText({}).with(spreadBar(spread, all_)),
            Cell::ofRolls(spread.unmet / spread.runs)}});
    }
  }

  Table failures() const {
    Table table{"study-failures",
                QStringLiteral("Runs that failed, and runs that did not end by themselves"),
                {{QStringLiteral("Run"), false},
                 {QStringLiteral("Settings"), false},
                 {QStringLiteral("State"), false},
                 {QStringLiteral("Last words"), false}},
                {},
                {},
                Table::Use::kLong};
    for (const StudyRun &run : study_.runs) {
      if (!run.isDone()) {
        table.rows.push_back({{runCell(run), Cell::ofText(settingsOf(run)), Cell::ofText(run.state),
                               Cell::ofText(run.message)}});
      }
    }
    return table;
  }

  static Cell runCell(const StudyRun &run) {
    return Cell::ofText(run.id).to("runs/" + escaped(run.id) + "/");
  }

  Table runs() const {
    Table table{"study-runs",
                QStringLiteral("All runs that are done, best first: least unmet rolls, then least "
                               "cost. A run's name leads to its folder."),
                {{QStringLiteral("Run"), false}},
                {},
                {},
                Table::Use::kLong};
    for (qsizetype key = 0; key < study_.keys.size(); ++key) {
      const bool isOfNumbers = std::all_of(study_.runs.begin(), study_.runs.end(), [&](auto &run) {
        return isNumber(run.settings.value(key));
      });
      table.columns.push_back({capitalized(nameOfKey(study_.keys[key])), isOfNumbers});
    }
    addCostColumns(table.columns);
    table.columns.push_back({QStringLiteral("Patterns")});
    table.columns.push_back({QStringLiteral("Seconds")});
    for (const StudyRun &run : study_.runs) {
      if (run.isDone()) {
        table.rows.push_back(runRow(run));
      }
    }
    return table;
  }

  Row runRow(const StudyRun &run) const {
    Row row{{runCell(run)}};
    for (const QString &value : run.settings) {
      row.cells.push_back(Cell::ofText(shownValue(value)));
    }
    addCosts(row.cells, run.figures, figureOf(done_.at(run.data).front()->figures, kCost));
    row.cells.push_back(Cell::ofNumber(figureOf(run.figures, QStringLiteral("patterns")), 0));
    row.cells.push_back(Cell::ofNumber(run.seconds, 2));
    return row;
  }

  const StudyRecord &study_;
  Spread all_;
  std::map<QString, std::vector<const StudyRun *>> done_;  // by data, best first
  std::vector<QString> kinds_;
};

// The best run of all with its settings, and what the pooled patterns save.
QByteArray studyTiles(const StudyRecord &study, const StudyTables &tables) {
  const Spread &all = tables.all();
  const auto total = grouped(static_cast<double>(study.runs.size()), 0);
  const bool isWhole = static_cast<std::size_t>(all.runs) == study.runs.size();
  QByteArray html = "<ul class=tiles>\n";
  if (all.runs > 0) {
    const StudyRun &best = study.runs.front();
    html += tile("good", grouped(figureOf(best.figures, kCost), 0), "cost of the best run",
                 tables.settingsOf(best));
    html += tile("plain", grouped(all.mean(), 0), "mean cost",
                 QStringLiteral("from %1 to %2").arg(grouped(all.least, 0), grouped(all.most, 0)));
  }
  for (const StudyPool &pool : study.pools) {
    if (pool.data == study.runs.front().data) {
      const double best = figureOf(study.runs.front().figures, kCost);
      const double cost = figureOf(pool.figures, kCost);
      html += tile("good", grouped(cost, 0), "with the patterns of all runs",
                   QStringLiteral("%1 % less than the best run")
                       .arg(grouped(best > 0 ? 100 * (best - cost) / best : 0, 2)));
    }
  }
  html += tile(
      isWhole ? "plain" : "bad",
      isWhole ? total : QStringLiteral("%1 of %2").arg(grouped(all.runs, 0), total), "runs done",
      isWhole ? QStringLiteral("none failed") : QStringLiteral("the others are listed below"));
  return html + "</ul>\n";
}

QByteArray nameOf(const Table &table) {
  return table.id == "study-compare"    ? "Best and worst"
         : table.id == "study-failures" ? "Failed"
         : table.id == "study-settings" ? "Settings"
                                        : "All runs";
}

}  // namespace

QByteArray studyPage(const StudyRecord &study, const QString &version) {
  const StudyTables tables(study);
  Document document;
  document.title = titleOf(study.name);
  document.subtitle = study.mill.isEmpty() ? QStringLiteral("a study")
                                           : QStringLiteral("a study of %1").arg(study.mill);
  document.version = version;
  document.top = "<section id=figures aria-label=\"The study in figures\">\n" +
                 studyTiles(study, tables) + "</section>\n";
  for (const Table &table : tables.tables()) {
    const QByteArray name = nameOf(table);
    document.sections.push_back(
        {table.id + "-part", name, "<h2>" + name + "</h2>\n" + toHtml(table)});
  }
  return toHtml(document);
}

std::vector<Table> studyTables(const StudyRecord &study) {
  return StudyTables(study).tables();
}

}  // namespace corvane::report
