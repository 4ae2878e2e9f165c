#pragma once

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "core/text_table.h"
#include "planning/demand_matcher.h"
#include "planning/planning_data.h"

// Collects the accepted orders of a file and turns them into the orders, the demand table, the
// grades and the periods.
//
// Orders are held as rows of numbers until the file ends; then they are sorted and merged group by
// group, which costs linear time and touches memory in order, where looking up each order as it
// comes would miss the cache several times. The outcome is that of storing them one by one.
class OrderCollector {
 public:
  explicit OrderCollector(PlanningData &data) : data_(data) {}
  OrderCollector(const OrderCollector &) = delete;
  OrderCollector &operator=(const OrderCollector &) = delete;
  ~OrderCollector() = default;

  // Names the texts of the orders.
  TextTable &texts() { return texts_; }

  // The next order of the file, with the numbers of its texts. The width must be a number.
  void add(TextTable::Id grade, TextTable::Id period, TextTable::Id customer, double width,
           qint32 quantity);

  // Fills the planning data; nothing may be added afterwards.
  void finish();

 private:
  struct Row {
    quint32 slot;   // the place in slots_
    quint32 width;  // the place in widths_
    TextTable::Id customer;
    qint32 quantity;
    quint32 number;  // the place in the file
  };
  using Rows = std::vector<Row>;
  // A grade and period.
  struct Slot {
    TextTable::Id grade;
    TextTable::Id period;
  };

  Rows sortedBySlotAndWidth() const;
  // Merges the rows of each key; gives one row an order, by slot and width.
  Rows mergeGroups(const Rows &sorted);
  // The rows of one slot and width.
  void mergeGroup(std::span<const Row> group, Rows &merged);
  void fillDemand();
  void fillGradesAndPeriods();
  void fillOrders(Rows &merged);
  std::unique_ptr<Order> orderOf(const Row &row) const;

  PlanningData &data_;
  TextTable texts_;
  // By order of first appearance.
  std::vector<Slot> slots_;
  std::vector<double> widths_;
  Rows rows_;
  std::unordered_map<quint64, quint32> numberOfSlot_;
  std::unordered_map<double, quint32> numberOfWidth_;

  // Filled by finish().
  std::vector<quint32> textRanks_;
  std::vector<quint32> slotRanks_;
  // For every customer the count of merged rows when it last began one.
  std::vector<std::size_t> mergedOfCustomer_;
  DemandMatcher matcher_;
  // For every row the quantity of the demand entry that it begins, or -1 when it adds to another.
  std::vector<qint32> entryQuantities_;
};
