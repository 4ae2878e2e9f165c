#include "report/figures.h"

#include <algorithm>

namespace corvane::report {

namespace {

using record::Record;

template <typename List>
auto &at(List &list, int index) {
  return list[static_cast<std::size_t>(index)];
}

GradeFigures &gradeOf(Figures &figures, const Record &record, const QString &grade) {
  GradeFigures &result = figures.grades[grade];
  const auto periods = static_cast<std::size_t>(record.periods.size());
  result.byPeriod.resize(periods);
  result.orderedInches.resize(periods);
  result.seenInches.resize(periods);
  return result;
}

void addDemand(Figures &figures, const Record &record) {
  for (const record::Order &order : record.orders) {
    GradeFigures &grade = gradeOf(figures, record, order.grade);
    for (std::size_t period = 0; period < order.rolls.size(); ++period) {
      grade.widths[order.width].ordered += order.rolls[period];
      grade.orderedInches[period] += order.rolls[period] * order.width;
      figures.ordered.add(order.rolls[period], order.width);
    }
  }
}

// The rolls ordered by grade, width and period.
std::map<std::pair<QString, double>, std::vector<double>> demandGroups(const Record &record) {
  std::map<std::pair<QString, double>, std::vector<double>> groups;
  for (const record::Order &order : record.orders) {
    std::vector<double> &rolls = groups[{order.grade, order.width}];
    rolls.resize(order.rolls.size());
    for (std::size_t period = 0; period < rolls.size(); ++period) {
      rolls[period] += order.rolls[period];
    }
  }
  return groups;
}

void addSeen(Figures &figures, const Record &record) {
  const auto groups = demandGroups(record);
  for (const record::SeenDemand &seen : record.seen) {
    GradeFigures &grade = gradeOf(figures, record, seen.grade);
    const auto group = groups.find({seen.grade, seen.width});
    for (std::size_t period = 0; period < seen.rolls.size(); ++period) {
      grade.widths[seen.width].seen += seen.rolls[period];
      grade.seenInches[period] += seen.rolls[period] * seen.width;
      figures.seenInches += seen.rolls[period] * seen.width;
      const double ordered = group == groups.end() ? 0 : group->second[period];
      figures.demandGroups += ordered > 0 ? 1 : 0;
      figures.partlySeenGroups += seen.rolls[period] < ordered ? 1 : 0;
    }
  }
}

void addReels(Figures &figures, const Record &record, const record::Reels &reels) {
  const record::Pattern &pattern = at(record.patterns, reels.pattern);
  const record::Cutter &cutter = at(record.cutters, pattern.cutter);
  const Paper paper{reels.reels, reels.reels * cutter.deckle, reels.reels * pattern.trim,
                    reels.reels * pattern.trim * cutter.wasteCost};
  GradeFigures &grade = gradeOf(figures, record, cutter.grade);
  at(grade.byPeriod, reels.period).add(paper);
  grade.all.add(paper);
  at(figures.byCutter, pattern.cutter).add(paper);
  figures.all.add(paper);
  for (const auto &[width, count] : pattern.rolls) {
    grade.widths[width].made += reels.reels * count;
  }
  PatternFigures &use = at(figures.patterns, reels.pattern);
  use.byPeriod.resize(static_cast<std::size_t>(record.periods.size()));
  at(use.byPeriod, reels.period) += reels.reels;
  use.reels += reels.reels;
}

void countPatterns(Figures &figures, const Record &record) {
  for (std::size_t i = 0; i < record.patterns.size(); ++i) {
    const QString &name = at(record.cutters, record.patterns[i].cutter).grade;
    GradeFigures &grade = gradeOf(figures, record, name);
    const int used = figures.patterns[i].reels > 0 ? 1 : 0;
    ++grade.patterns;
    grade.usedPatterns += used;
    figures.usedPatterns += used;
  }
}

void addDeliveries(Figures &figures, const Record &record, const record::Plan &plan) {
  for (const record::Delivery &delivery : plan.deliveries) {
    const record::Order &order = at(record.orders, delivery.order);
    WidthFigures &width = gradeOf(figures, record, order.grade).widths[order.width];
    width.delivered += delivery.delivered;
    width.unmet += delivery.unmet;
    figures.delivered.add(delivery.delivered, order.width);
    figures.unmet.add(delivery.unmet, order.width);
  }
  for (const record::StoreRolls &surplus : plan.surplus) {
    const record::Store &store = at(record.stores, surplus.store);
    const QString &grade = at(record.cutters, store.cutter).grade;
    gradeOf(figures, record, grade).widths[store.width].surplus += surplus.rolls;
    figures.surplus.add(surplus.rolls, store.width);
  }
}

void addShipments(Figures &figures, const Record &record, const record::Plan &plan) {
  for (const record::Shipment &shipment : plan.shipments) {
    const record::Store &store = at(record.stores, shipment.store);
    const record::Machine &machine = at(record.machines, at(record.cutters, store.cutter).machine);
    Freight &freight =
        figures
            .lanes[{plan.modes[shipment.mode], machine.mill.isEmpty() ? machine.name : machine.mill,
                    at(record.orders, shipment.order).customer}];
    freight.rolls += shipment.rolls;
    freight.inches += shipment.rolls * store.width;
    freight.cost += shipment.cost;
  }
}

// The days that the quickest of the machine's cutters takes for a reel; 0 where none has a
// capacity.
double shortestReel(const Record &record, int machine) {
  double most = 0;
  for (const record::Cutter &cutter : record.cutters) {
    most = cutter.machine == machine ? std::max(most, cutter.capacity) : most;
  }
  return most > 0 ? 1 / most : 0;
}

}  // namespace

void Paper::add(const Paper &other) {
  reels += other.reels;
  inches += other.inches;
  trim += other.trim;
  wasteCost += other.wasteCost;
}

Figures figuresOf(const Record &record) {
  Figures figures;
  figures.byCutter.resize(record.cutters.size());
  figures.patterns.resize(record.patterns.size());
  addDemand(figures, record);
  addSeen(figures, record);
  if (record.plan.has_value()) {
    for (const record::Reels &reels : record.plan->reels) {
      addReels(figures, record, reels);
    }
    addDeliveries(figures, record, *record.plan);
    addShipments(figures, record, *record.plan);
  }
  countPatterns(figures, record);
  return figures;
}

bool isFull(const Record &record, const record::MachineTime &time) {
  const double left = time.available - time.used;
  const bool whole = record.plan.has_value() && record.plan->wholeReels;
  return left <= 1e-6 * time.available || (whole && left < shortestReel(record, time.machine));
}

double costOf(const record::Plan &plan, const char *kind) {
  for (const record::Named &cost : plan.cost) {
    if (cost.name == QLatin1String(kind)) {
      return cost.value;
    }
  }
  return 0;
}

}  // namespace corvane::report
