#pragma once

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "checks/mill_records.h"

namespace corvane::checks {

// Look-ups in the records, and what the orders sum up to. Made once all files are read; broken
// lines take no part.

inline quint64 pairKey(quint32 a, quint32 b) {
  return quint64{a} << 32U | b;
}

// The orders that share something, such as grade and period.
struct OrderTotal {
  quint32 line;  // the first one
  qint64 orders = 0;
  qint64 rolls = 0;
  double inches = 0;
};

// The totals of a map by their first lines.
template <typename Key>
std::vector<std::pair<Key, const OrderTotal *>> byFirstLine(
    const std::unordered_map<Key, OrderTotal> &totals) {
  std::vector<std::pair<Key, const OrderTotal *>> sorted;
  for (const auto &[key, total] : totals) {
    sorted.emplace_back(key, &total);
  }
  std::sort(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) {
    return std::pair(a.second->line, a.first) < std::pair(b.second->line, b.first);
  });
  return sorted;
}

struct GradeWidth {
  TextId grade = 0;
  quint32 width = 0;  // the place in MillRecords::widths
  double inches = 0;
  OrderTotal total;
};

struct MillIndex {
  explicit MillIndex(const MillRecords &mill);

  // Of grades: the cutters that are stored.
  std::unordered_map<TextId, std::vector<const CutterRow *>> cutters;
  std::unordered_set<TextId> locations;
  // Stored rates by customer and mill (pairKey), and by customer.
  std::unordered_map<quint64, std::vector<const RateRow *>> rates;
  std::unordered_set<TextId> ratedCustomers;

  // Periods of accepted orders in the order of first mention, and that order.
  std::vector<TextId> periods;
  std::unordered_map<TextId, quint32> placeOfPeriod;
  std::unordered_map<TextId, quint32> lineOfPeriod;
  // Accepted orders by grade; by grade and period; by customer and grade; widths of grades.
  std::unordered_map<TextId, OrderTotal> byGrade;
  std::unordered_map<quint64, OrderTotal> byGradePeriod;
  std::unordered_map<quint64, OrderTotal> byCustomerGrade;
  std::unordered_set<TextId> customers;
  std::vector<GradeWidth> gradeWidths;  // by grade, widest first
  double inches = 0;                    // of all accepted orders, broken lines included

  // Null where there is none.
  const std::vector<const CutterRow *> *cuttersOf(TextId grade) const;
  const std::vector<const RateRow *> *ratesOf(TextId customer, TextId mill) const;
  double widest(TextId grade) const;    // deckle; 0 where no cutter runs it
  double smallest(TextId grade) const;  // deckle above 0; 0 where there is none
};

}  // namespace corvane::checks
