#include <QSet>

#include "report/sections.h"

namespace corvane::report {

namespace {

// One scale for all pages, so that two can be compared at a glance.
const char *heatOf(double percent) {
  constexpr double kSteps[] = {0.25, 0.5, 1, 2};
  constexpr const char *kLooks[] = {"h0", "h1", "h2", "h3"};
  for (std::size_t i = 0; i < std::size(kSteps); ++i) {
    if (percent < kSteps[i]) {
      return kLooks[i];
    }
  }
  return "h4";
}

Cell trimCell(const Paper &paper) {
  return paper.inches > 0 ? Cell::ofNumber(paper.trimPercent(), 2).as(heatOf(paper.trimPercent()))
                          : Cell();
}

// The least share of trim in the paper that these rolls can have; empty where no bound is known.
Cell boundCell(double bound, double rollInches) {
  return bound > 0 ? Cell::ofNumber(100 * std::max(0.0, bound - rollInches) / bound, 2) : Cell();
}

double deliveredInches(const GradeFigures &grade) {
  double inches = 0;
  for (const auto &[width, rolls] : grade.widths) {
    inches += width * rolls.delivered;
  }
  return inches;
}

std::vector<Cell> amounts(const Paper &paper) {
  return {Cell::ofNumber(paper.inches, 0), Cell::ofNumber(paper.trim, 0),
          Cell::ofNumber(paper.wasteCost, 0)};
}

class GradeTrim {
 public:
  explicit GradeTrim(const Subject &subject) : subject_(subject) {
    for (const record::PaperBound &bound : subject.record.plan->paperBounds) {
      bounds_[bound.grade] = bound.inches;
    }
  }

  Table table() const {
    Table table{
        "trim-by-grade",
        QStringLiteral("Trim in percent of the paper, by grade and period; the bound is the "
                       "least that any patterns can leave over all periods"),
        columns(),
        {totals()},
        {},
        Table::Use::kShort};
    for (const auto &[name, grade] : subject_.figures.grades) {
      table.rows.push_back(gradeRow(name, grade));
    }
    return table;
  }

 private:
  std::vector<Column> columns() const {
    std::vector<Column> columns{{QStringLiteral("Grade"), false}};
    for (const QString &period : subject_.record.periods) {
      columns.push_back({QStringLiteral("Period ") + period});
    }
    for (const char *head : {"All", "Paper, in", "Trim, in", "Waste cost", "Bound %"}) {
      columns.push_back({QString::fromLatin1(head)});
    }
    return columns;
  }

  Row row(const QString &head, const std::vector<Paper> &byPeriod, const Paper &all,
          const Cell &bound) const {
    Row row{{Cell::ofText(head)}};
    for (const Paper &paper : byPeriod) {
      row.cells.push_back(trimCell(paper));
    }
    row.cells.push_back(trimCell(all));
    for (const Cell &cell : amounts(all)) {
      row.cells.push_back(cell);
    }
    row.cells.push_back(bound);
    return row;
  }

  Row gradeRow(const QString &name, const GradeFigures &grade) const {
    const auto bound = bounds_.find(name);
    return row(name, grade.byPeriod, grade.all,
               bound == bounds_.end() ? Cell() : boundCell(bound->second, deliveredInches(grade)));
  }

  Row totals() const {
    std::vector<Paper> byPeriod(static_cast<std::size_t>(subject_.record.periods.size()));
    double bound = 0;
    for (const auto &[name, grade] : subject_.figures.grades) {
      for (std::size_t period = 0; period < byPeriod.size(); ++period) {
        byPeriod[period].add(grade.byPeriod[period]);
      }
      const auto found = bounds_.find(name);
      bound += found == bounds_.end() ? 0 : found->second;
    }
    return row(QStringLiteral("All grades"), byPeriod, subject_.figures.all,
               boundCell(bounds_.empty() ? 0 : bound, subject_.figures.delivered.inches));
  }

  const Subject &subject_;
  std::map<QString, double> bounds_;
};

Table cutterTable(const Subject &subject) {
  Table table{"trim-by-deckle",
              QStringLiteral("Trim by deckle and machine"),
              {{QStringLiteral("Machine"), false},
               {QStringLiteral("Mill"), false},
               {QStringLiteral("Grade"), false},
               {QStringLiteral("Deckle, in")},
               {QStringLiteral("Reels")},
               {QStringLiteral("Paper, in")},
               {QStringLiteral("Trim, in")},
               {QStringLiteral("Waste cost")},
               {QStringLiteral("Trim %")}},
              {},
              {},
              Table::Use::kShort};
  for (std::size_t i = 0; i < subject.record.cutters.size(); ++i) {
    const record::Cutter &cutter = subject.record.cutters[i];
    const record::Machine &machine =
        subject.record.machines[static_cast<std::size_t>(cutter.machine)];
    const Paper &paper = subject.figures.byCutter[i];
    Row row{{Cell::ofText(machine.name), Cell::ofText(machine.mill), Cell::ofText(cutter.grade),
             Cell::ofWidth(cutter.deckle), Cell::ofNumber(paper.reels, 1)}};
    for (const Cell &cell : amounts(paper)) {
      row.cells.push_back(cell);
    }
    row.cells.push_back(trimCell(paper));
    table.rows.push_back(row);
  }
  return table;
}

Row line(const char *head, double inches, const char *look = "") {
  return {{Cell::ofText(QString::fromLatin1(head)), Cell::ofNumber(inches, 2)}, look};
}

// How the paper becomes the demand of the log.
Table balanceTable(const Subject &subject) {
  const Figures &figures = subject.figures;
  Table table{"balance",
              QStringLiteral("From the paper to the demand that the run logged, inches"),
              {{QStringLiteral("What"), false}, {QStringLiteral("Inches")}},
              {},
              {line("Paper used", figures.all.inches), line("less trim", -figures.all.trim),
               line("less surplus rolls", -figures.surplus.inches),
               line("plus what is short", figures.unmet.inches),
               line("is the demand", figures.reckonedDemand(), "sum")},
              Table::Use::kInOrder};
  if (const auto logged = subject.record.log.demandInches) {
    table.rows.push_back(line("Demand in the log", *logged));
    table.rows.push_back(line("Difference", figures.reckonedDemand() - *logged));
  }
  return table;
}

}  // namespace

std::vector<Table> trimTables(const Subject &subject) {
  if (!subject.hasPlan()) {
    return {};
  }
  return {GradeTrim(subject).table(), cutterTable(subject), balanceTable(subject)};
}

}  // namespace corvane::report
