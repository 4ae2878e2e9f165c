#pragma once

#include <QHash>
#include <QLinkedList>
#include <QString>
#include <vector>

#include "core/comparison.h"
#include "core/skip_list.h"
#include "planning/cutter.h"
#include "planning/demand_table.h"
#include "planning/freight_rate.h"
#include "planning/order.h"

namespace corvane {

// The comparators of the planning data, one of each for the run.
struct PlanningComparators {
  StrComp name;
  DoubleComp number;
  CutterComp cutter;
  CutterCompByName cutterByName;
  OrderComp order;
  FreightRateComp freightRate;
  FreightRateCustMillComp freightRateCustMill;
};

// Everything that the three data files hold. The readers fill it, machine file first; afterwards it
// is only read. It owns its records; the comparators must outlive it.
struct PlanningData {
  explicit PlanningData(PlanningComparators &theComparators);
  PlanningData(const PlanningData &) = delete;
  PlanningData &operator=(const PlanningData &) = delete;
  ~PlanningData();

  PlanningComparators &comparators;

  // The grades by name, for look-ups; they are the texts of `grades`.
  skipList<QString> names;
  skipList<Cutter> cutters;
  // The cutters of every grade, in the order of the cutter list.
  QHash<QString, std::vector<const Cutter *>> cuttersByGrade;
  // The distinct deckle widths of all lines of the machine file, ascending, inches.
  QLinkedList<double> cutterWidths;
  // The widest cutter of each grade, inches.
  QHash<QString, double> widestCutter;
  skipList<Order> orders;
  DemandTable demand;
  // The grades with orders, ascending; and the periods with orders, in order of first appearance.
  QLinkedList<QString> grades;
  QLinkedList<QString> periods;
  skipList<FreightRate> freightRates;

  bool isPlanned(const QString &grade) const;
  // Both are empty for a grade that is not there.
  const std::vector<const Cutter *> &cuttersOf(const QString &grade) const;
  const std::vector<double> &demandWidthsOf(const QString &grade) const;
};

}  // namespace corvane
