#pragma once

#include <deque>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "planning/demand_matcher.h"
#include "planning/order_texts.h"
#include "planning/planning_data.h"

namespace corvane {

// Collects the accepted orders of a file and turns them into the orders, the demand table, the
// grades and the periods.
//
// Orders are held as rows of numbers, apart for each grade and period, until the file ends; then
// they are sorted and merged, one grade and period after the other. So each step works on what the
// processor's cache holds, where looking up each order as it comes would miss it several times. The
// outcome is that of storing them one by one.
class OrderCollector {
 public:
  // The texts of the orders and the planning data must outlive this.
  OrderCollector(const TextTable &texts, PlanningData &data) : texts_(texts), data_(data) {}
  OrderCollector(const OrderCollector &) = delete;
  OrderCollector &operator=(const OrderCollector &) = delete;
  ~OrderCollector() = default;

  // The next order of the file; place and width get a number when they have none. The width must be
  // a number.
  void add(OrderTexts::Place &place, OrderTexts::Width &width, TextTable::Id customer,
           qint32 quantity);

  // Fills the planning data; nothing may be added afterwards.
  void finish();

 private:
  struct Row {
    quint32 width;  // the place in widths_
    TextTable::Id customer;
    qint32 quantity;
    quint32 number;  // the place in the slot
  };
  // What was ordered of a grade in a period.
  struct Slot {
    TextTable::Id grade;
    TextTable::Id period;
    // As they came; in pieces, since a growing vector leaves memory behind that it has touched.
    std::deque<Row> rows;
    PeriodDemand *demand;  // set by finish()
  };

  quint32 numberOf(const OrderTexts::Place &place);
  quint32 numberOf(const OrderTexts::Width &width);
  // Fills demand and orders of one slot.
  void finishSlot(Slot &slot);
  // Merges the sorted rows of each key.
  void mergeSorted(std::vector<DemandEntry> &firstOfWidths);
  // The rows of one width; gives the quantity of their first demand entry.
  qint32 mergeGroup(std::span<const Row> group);
  void fillDemand(const Slot &slot);
  void fillGradesAndPeriods();
  std::unique_ptr<Order> orderOf(const Slot &slot, const Row &row) const;

  const TextTable &texts_;
  PlanningData &data_;
  // By order of first appearance.
  std::vector<Slot> slots_;
  std::vector<double> widths_;
  // Different bytes may spell the same texts, and the same width.
  std::unordered_map<quint64, quint32> numberOfSlot_;
  std::unordered_map<double, quint32> numberOfWidth_;

  // Filled by finish().
  std::vector<quint32> textRanks_;
  std::vector<quint32> widthRanks_;
  // For every customer the count of merged rows of all slots when it last began one.
  std::vector<std::size_t> mergedOfCustomer_;
  std::size_t mergedBefore_ = 0;  // in the slots that are finished
  DemandMatcher matcher_;
  // The rows of the slot, sorted; and one for each order of it, in that order. They keep their
  // memory from slot to slot: to hand it back and ask for it again costs more than the work in it.
  std::vector<Row> sorted_;
  std::vector<Row> merged_;
  // For every row of the slot the quantity of the demand entry that it begins, or -1 when it adds
  // to another.
  std::vector<qint32> entryQuantities_;
};

}  // namespace corvane
