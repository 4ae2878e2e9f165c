#pragma once

#include <QHash>
#include <QLinkedList>
#include <QString>
#include <vector>

namespace corvane {

// Demand by grade, period and width. Every level keeps the order of first appearance in the order
// file; the indexes beside it serve look-ups by name.

struct DemandEntry {
  double width = 0;  // inches
  qint32 quantity = 0;
};

struct PeriodDemand {
  QString period;
  QLinkedList<DemandEntry> demands;
  // Each width once, with the quantity of its first entry, widest first. Whoever fills the demands
  // fills this too: every step of planning starts from it, and none has to walk the demands.
  std::vector<DemandEntry> firstOfWidths;
};

struct GradeDemand {
  QString grade;
  QLinkedList<PeriodDemand> periods;
  QHash<QString, PeriodDemand *> byPeriod;
  // The distinct widths of all periods (exact equality), widest first. Whoever fills the periods
  // calls gatherWidths() at the end.
  std::vector<double> widths;

  void gatherWidths();

  // The entry of the period, or null.
  const PeriodDemand *find(const QString &period) const { return byPeriod.value(period); }
};

struct DemandTable {
  QLinkedList<GradeDemand> grades;
  QHash<QString, GradeDemand *> byGrade;

  DemandTable() = default;
  // Copies would leave the indexes with the original.
  DemandTable(const DemandTable &) = delete;
  DemandTable &operator=(const DemandTable &) = delete;
  ~DemandTable() = default;

  // The entry of the grade, or null.
  const GradeDemand *find(const QString &grade) const { return byGrade.value(grade); }

  // A new, empty entry of the period in the grade's entry, which is made where there is none.
  // REQUIRES that the grade has none of the period.
  PeriodDemand &addPeriod(const QString &grade, const QString &period);
};

// The distinct widths of one period (exact equality), widest first.
std::vector<double> distinctWidths(const PeriodDemand &demand);

// The demand list of a period: each width once, with the quantity of its first entry, widest first.
// Empty for null.
const std::vector<DemandEntry> &demandList(const PeriodDemand *demand);

}  // namespace corvane
