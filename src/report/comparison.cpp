#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

// A pattern by what it does: equal ones may have other names in another run.
using PatternKey = std::tuple<QString, double, std::vector<std::pair<double, int>>>;

struct PatternUse {
  double reels = 0;
  QString rolls;
};

std::map<PatternKey, PatternUse> patternsOf(const Subject &subject) {
  std::map<PatternKey, PatternUse> patterns;
  for (std::size_t i = 0; i < subject.record.patterns.size(); ++i) {
    const record::Pattern &pattern = subject.record.patterns[i];
    const record::Cutter &cutter = subject.record.cutters[static_cast<std::size_t>(pattern.cutter)];
    patterns[{cutter.grade, cutter.deckle, pattern.rolls}].reels +=
        subject.figures.patterns[i].reels;
  }
  return patterns;
}

std::vector<Column> figureColumns(const QString &head) {
  return {{head, false},
          {QStringLiteral("This run")},
          {QStringLiteral("Other run")},
          {QStringLiteral("Change")},
          {QStringLiteral("%")}};
}

// What less of is better.
enum class Better { kLess, kMore, kNeither };

Row figureRow(const QString &head, double here, double other, int decimals,
              Better better = Better::kLess, const char *look = "") {
  const double difference = other - here;
  const Cell shown = Cell::ofChange(difference, decimals);
  const bool isBetter = better == Better::kLess ? difference < 0 : difference > 0;
  // A change too small to be shown is neither.
  const auto judged = [&](const Cell &cell) {
    const bool isPlain = cell.text == QLatin1String("0") || better == Better::kNeither;
    return cell.as(isPlain ? "" : isBetter ? "good" : "bad");
  };
  return {{Cell::ofText(head), Cell::ofNumber(here, decimals), Cell::ofNumber(other, decimals),
           judged(shown), here != 0 ? judged(Cell::ofChange(100 * difference / here, 1)) : Cell()},
          look};
}

class RunComparison {
 public:
  RunComparison(const Subject &here, const Subject &other)
      : here_(here),
        other_(other),
        patternsHere_(patternsOf(here)),
        patternsOther_(patternsOf(other)) {}

  Comparison compare() const {
    Comparison comparison;
    comparison.summary = summary();
    comparison.tables.push_back(figures());
    if (hasPlans()) {
      comparison.tables.push_back(grades());
    }
    for (Table table : {patterns(), settings()}) {
      if (!table.rows.empty()) {
        comparison.tables.push_back(std::move(table));
      }
    }
    return comparison;
  }

 private:
  bool hasPlans() const { return here_.hasPlan() && other_.hasPlan(); }

  // Which of the two has no plan, where one has none.
  QString missingPlan() const {
    if (hasPlans()) {
      return {};
    }
    return !here_.hasPlan() && !other_.hasPlan()
               ? QStringLiteral(" Neither has a plan, so costs and trim are not compared.")
               : QStringLiteral(" %1 run has no plan, so costs and trim are not compared.")
                     .arg(here_.hasPlan() ? QStringLiteral("The other") : QStringLiteral("This"));
  }

  QString summary() const {
    int both = 0;
    for (const auto &pattern : patternsHere_) {
      both += patternsOther_.contains(pattern.first) ? 1 : 0;
    }
    const auto only = [&](const auto &patterns) {
      return grouped(static_cast<double>(patterns.size()) - both, 0);
    };
    return QStringLiteral(
               "The other run is %1, started %2. %3 patterns are in both, %4 only here, %5 "
               "only there. A change is the other run less this one.")
               .arg(other_.record.name,
                    other_.record.log.started.isEmpty() ? QStringLiteral("at an unknown time")
                                                        : other_.record.log.started,
                    grouped(both, 0), only(patternsHere_), only(patternsOther_)) +
           missingPlan();
  }

  Table figures() const {
    Table table{"compare-figures",
                QStringLiteral("This run and the other, money and inches by cause"),
                figureColumns(QStringLiteral("Figure")),
                {},
                {},
                Table::Use::kInOrder};
    if (hasPlans()) {
      addCosts(table);
      addPlan(table);
    }
    const Figures &a = here_.figures;
    const Figures &b = other_.figures;
    table.rows.push_back(figureRow(QStringLiteral("Rolls ordered"), a.ordered.rolls,
                                   b.ordered.rolls, 0, Better::kNeither));
    table.rows.push_back(figureRow(QStringLiteral("Inches ordered"), a.ordered.inches,
                                   b.ordered.inches, 0, Better::kNeither));
    table.rows.push_back(figureRow(
        QStringLiteral("Patterns offered"), static_cast<double>(here_.record.patterns.size()),
        static_cast<double>(other_.record.patterns.size()), 0, Better::kNeither));
    return table;
  }

  void addCosts(Table &table) const {
    const record::Plan &a = *here_.record.plan;
    const record::Plan &b = *other_.record.plan;
    table.rows.push_back(figureRow(QStringLiteral("Cost of the plan"), a.totalCost, b.totalCost, 0,
                                   Better::kLess, "sum"));
    QStringList kinds;
    for (const record::Plan *plan : {&a, &b}) {
      for (const record::Named &cost : plan->cost) {
        if (!kinds.contains(cost.name)) {
          kinds << cost.name;
        }
      }
    }
    for (const QString &kind : kinds) {
      const QByteArray name = kind.toUtf8();
      table.rows.push_back(figureRow(QStringLiteral("– %1").arg(kind), costOf(a, name.constData()),
                                     costOf(b, name.constData()), 0));
    }
  }

  // Whole rolls need no decimals.
  static int decimalsOf(const Figures &a, const Figures &b) {
    const auto isWhole = [](double rolls) { return std::round(rolls) == rolls; };
    return isWhole(a.unmet.rolls) && isWhole(b.unmet.rolls) ? 0 : 1;
  }

  void addPlan(Table &table) const {
    const Figures &a = here_.figures;
    const Figures &b = other_.figures;
    table.rows.push_back(
        figureRow(QStringLiteral("Paper used, in"), a.all.inches, b.all.inches, 0));
    table.rows.push_back(figureRow(QStringLiteral("Trim, in"), a.all.trim, b.all.trim, 0));
    table.rows.push_back(figureRow(QStringLiteral("Trim, % of the paper"), a.all.trimPercent(),
                                   b.all.trimPercent(), 3));
    table.rows.push_back(
        figureRow(QStringLiteral("Surplus, in"), a.surplus.inches, b.surplus.inches, 0));
    table.rows.push_back(
        figureRow(QStringLiteral("Rolls short"), a.unmet.rolls, b.unmet.rolls, decimalsOf(a, b)));
    table.rows.push_back(
        figureRow(QStringLiteral("Reels (deckles) cut"), a.all.reels, b.all.reels, 1));
    table.rows.push_back(figureRow(QStringLiteral("Patterns used"), a.usedPatterns, b.usedPatterns,
                                   0, Better::kNeither));
  }

  Table grades() const {
    Table table{"compare-grades",
                QStringLiteral("Trim by grade, inches"),
                figureColumns(QStringLiteral("Grade")),
                {},
                {},
                Table::Use::kShort};
    std::set<QString> names;
    for (const Subject *subject : {&here_, &other_}) {
      for (const auto &grade : subject->figures.grades) {
        names.insert(grade.first);
      }
    }
    const auto trim = [](const Subject &subject, const QString &name) {
      const auto found = subject.figures.grades.find(name);
      return found == subject.figures.grades.end() ? 0 : found->second.all.trim;
    };
    for (const QString &name : names) {
      table.rows.push_back(figureRow(name, trim(here_, name), trim(other_, name), 0));
    }
    return table;
  }

  static QString rollsText(const std::vector<std::pair<double, int>> &rolls) {
    QStringList parts;
    for (const auto &[width, count] : rolls) {
      parts << QStringLiteral("%1 × %2").arg(count).arg(plain(width));
    }
    return parts.join(QLatin1String(", "));
  }

  // Those that one of the plans cuts otherwise than the other, the largest difference first.
  Table patterns() const {
    Table table{"compare-patterns",
                QStringLiteral("Patterns that the plans cut differently, reels"),
                {{QStringLiteral("Grade"), false},
                 {QStringLiteral("Deckle, in")},
                 {QStringLiteral("Rolls, in"), false},
                 {QStringLiteral("Offered"), false},
                 {QStringLiteral("This run")},
                 {QStringLiteral("Other run")},
                 {QStringLiteral("Change")}},
                {},
                {},
                Table::Use::kLong};
    std::map<PatternKey, std::pair<double, double>> reels;
    for (const auto &[key, use] : patternsHere_) {
      reels[key].first = use.reels;
    }
    for (const auto &[key, use] : patternsOther_) {
      reels[key].second = use.reels;
    }
    for (const auto &[key, use] : reels) {
      if (hasPlans() && use.first != use.second) {
        table.rows.push_back(patternRow(key, use));
      }
    }
    std::stable_sort(table.rows.begin(), table.rows.end(), [](const Row &a, const Row &b) {
      return std::abs(a.cells.back().number) > std::abs(b.cells.back().number);
    });
    return table;
  }

  Row patternRow(const PatternKey &key, const std::pair<double, double> &use) const {
    const bool isHere = patternsHere_.contains(key);
    const bool isThere = patternsOther_.contains(key);
    return {{Cell::ofText(std::get<0>(key)), Cell::ofWidth(std::get<1>(key)),
             Cell::ofText(rollsText(std::get<2>(key))),
             Cell::ofText(isHere && isThere ? QStringLiteral("in both")
                          : isHere          ? QStringLiteral("only here")
                                            : QStringLiteral("only there")),
             Cell::ofCount(use.first, 1), Cell::ofCount(use.second, 1),
             Cell::ofChange(use.second - use.first, 1)}};
  }

  // Parameters and files that differ: where a change of the figures may come from.
  Table settings() const {
    Table table{"compare-settings",
                QStringLiteral("Parameters and files that differ"),
                {{QStringLiteral("What"), false},
                 {QStringLiteral("This run"), false},
                 {QStringLiteral("Other run"), false}},
                {},
                {},
                Table::Use::kShort};
    std::map<QString, std::pair<QString, QString>> values;
    collect(values, here_.record, &std::pair<QString, QString>::first);
    collect(values, other_.record, &std::pair<QString, QString>::second);
    for (const auto &[what, value] : values) {
      if (value.first != value.second) {
        table.rows.push_back(
            {{Cell::ofText(what), Cell::ofText(value.first), Cell::ofText(value.second)}});
      }
    }
    return table;
  }

  static void collect(std::map<QString, std::pair<QString, QString>> &values,
                      const record::Record &record, QString std::pair<QString, QString>::*side) {
    for (const record::Parameter &parameter : record.parameters) {
      values[parameter.key].*side = parameter.value;
    }
    if (record.log.seed) {
      values[QStringLiteral("seed in the log")].*side = QString::number(*record.log.seed);
    }
    for (const record::File &file : record.files) {
      values[QStringLiteral("file: ") + file.role].*side =
          file.isThere ? QStringLiteral("%1 bytes, %2…")
                             .arg(grouped(static_cast<double>(file.bytes), 0), file.sha256.left(12))
                       : QStringLiteral("not there");
    }
  }

  const Subject &here_;
  const Subject &other_;
  std::map<PatternKey, PatternUse> patternsHere_;
  std::map<PatternKey, PatternUse> patternsOther_;
};

}  // namespace

Comparison compare(const Subject &here, const Subject &other) {
  return RunComparison(here, other).compare();
}

}  // namespace corvane::report
