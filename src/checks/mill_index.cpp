#include "checks/mill_index.h"

#include <algorithm>
#include <tuple>

namespace corvane::checks {

namespace {

void addTo(OrderTotal &total, const OrderRow &order, double width) {
  if (total.orders++ == 0) {
    total.line = order.line;
  }
  total.rolls += order.quantity;
  total.inches += order.quantity * width;
}

void addTo(OrderTotal &total, const OrderTotal &more) {
  total.line = total.orders == 0 ? more.line : std::min(total.line, more.line);
  total.orders += more.orders;
  total.rolls += more.rolls;
  total.inches += more.inches;
}

}  // namespace

MillIndex::MillIndex(const MillRecords &mill) {
  for (const CutterRow &cutter : mill.cutters) {
    if (!cutter.isBroken) {
      locations.insert(cutter.location);
      if (cutter.isStored) {
        cutters[cutter.grade].push_back(&cutter);
      }
    }
  }
  for (const RateRow &rate : mill.rates) {
    if (!rate.isBroken && rate.isStored) {
      rates[pairKey(rate.customer, rate.mill)].push_back(&rate);
      ratedCustomers.insert(rate.customer);
    }
  }
  std::unordered_map<quint64, OrderTotal> byGradeWidth;
  for (const OrderRow &order : mill.orders) {
    const double width = mill.widths[order.width];
    inches += order.quantity * width;
    if (order.isBroken) {
      continue;
    }
    if ((periods.empty() || periods.back() != order.period) &&
        placeOfPeriod.try_emplace(order.period, static_cast<quint32>(periods.size())).second) {
      periods.push_back(order.period);
      lineOfPeriod.emplace(order.period, order.line);
    }
    addTo(byGradePeriod[pairKey(order.grade, order.period)], order, width);
    addTo(byCustomerGrade[pairKey(order.customer, order.grade)], order, width);
    addTo(byGradeWidth[pairKey(order.grade, order.width)], order, width);
  }
  // Orders are many, their grades and customers few.
  for (const auto &[key, total] : byGradePeriod) {
    addTo(byGrade[static_cast<TextId>(key >> 32U)], total);
  }
  for (const auto &[key, total] : byCustomerGrade) {
    customers.insert(static_cast<TextId>(key >> 32U));
  }
  for (const auto &[key, total] : byGradeWidth) {
    const auto width = static_cast<quint32>(key);
    gradeWidths.push_back({static_cast<TextId>(key >> 32U), width, mill.widths[width], total});
  }
  std::sort(gradeWidths.begin(), gradeWidths.end(), [](const GradeWidth &a, const GradeWidth &b) {
    return std::tuple(a.grade, -a.inches) < std::tuple(b.grade, -b.inches);
  });
}

const std::vector<const CutterRow *> *MillIndex::cuttersOf(TextId grade) const {
  const auto known = cutters.find(grade);
  return known != cutters.end() ? &known->second : nullptr;
}

const std::vector<const RateRow *> *MillIndex::ratesOf(TextId customer, TextId mill) const {
  const auto known = rates.find(pairKey(customer, mill));
  return known != rates.end() ? &known->second : nullptr;
}

double MillIndex::widest(TextId grade) const {
  double width = 0;
  if (const auto *runs = cuttersOf(grade)) {
    for (const CutterRow *cutter : *runs) {
      width = std::max(width, cutter->width);
    }
  }
  return width;
}

double MillIndex::smallest(TextId grade) const {
  double width = 0;
  if (const auto *runs = cuttersOf(grade)) {
    for (const CutterRow *cutter : *runs) {
      if (cutter->width > 0 && (width == 0 || cutter->width < width)) {
        width = cutter->width;
      }
    }
  }
  return width;
}

}  // namespace corvane::checks
