#pragma once

#include <unordered_map>

#include "core/text_table.h"
#include "planning/demand_table.h"

// Fills a demand table order by order. A demand entry of the same width and the same quantity takes
// the order's quantity on top of its own; otherwise the order gets an entry of its own. (A repeated
// order, whose quantity has grown by the merge, therefore gets a second entry with the sum.)
class DemandRecorder {
 public:
  explicit DemandRecorder(DemandTable &table) : table_(table) {}
  DemandRecorder(const DemandRecorder &) = delete;
  DemandRecorder &operator=(const DemandRecorder &) = delete;

  // Constant cost on average. The numbers name grade and period in the text table.
  void record(const TextTable &texts, TextTable::Id grade, TextTable::Id period, double width,
              qint32 quantity);

 private:
  struct WidthAndQuantity {
    double width;
    qint32 quantity;
    bool operator==(const WidthAndQuantity &) const = default;
  };
  struct WidthAndQuantityHash {
    std::size_t operator()(const WidthAndQuantity &key) const;
  };
  struct NumberedEntry {
    qsizetype number;  // the place in the period's sequence
    DemandEntry *entry;
  };
  using EntryIndex = std::unordered_multimap<WidthAndQuantity, NumberedEntry, WidthAndQuantityHash>;
  struct PeriodSlot {
    PeriodDemand *demand = nullptr;
    EntryIndex entries;
  };

  PeriodSlot &slotOf(const TextTable &texts, TextTable::Id grade, TextTable::Id period);
  GradeDemand &gradeEntry(const QString &grade);
  static void addTo(PeriodSlot &slot, double width, qint32 quantity);
  static EntryIndex::iterator firstMatch(PeriodSlot &slot, const WidthAndQuantity &key);

  DemandTable &table_;
  std::unordered_map<quint64, PeriodSlot> slots_;
};
