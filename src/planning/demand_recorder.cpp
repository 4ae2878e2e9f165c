#include "planning/demand_recorder.h"

#include "core/numbers.h"

std::size_t DemandRecorder::WidthAndQuantityHash::operator()(const WidthAndQuantity &key) const {
  constexpr std::size_t kGoldenRatio = 0x9E3779B97F4A7C15U;
  return std::hash<double>()(key.width) * kGoldenRatio ^
         static_cast<std::size_t>(key.quantity) * kGoldenRatio;
}

void DemandRecorder::record(const TextTable &texts, TextTable::Id grade, TextTable::Id period,
                            double width, qint32 quantity) {
  addTo(slotOf(texts, grade, period), width, quantity);
}

DemandRecorder::PeriodSlot &DemandRecorder::slotOf(const TextTable &texts, TextTable::Id grade,
                                                   TextTable::Id period) {
  PeriodSlot &slot = slots_[quint64{grade} << 32U | period];
  if (slot.demand == nullptr) {
    GradeDemand &entry = gradeEntry(texts.text(grade));
    entry.periods.append(PeriodDemand{texts.text(period), {}});
    slot.demand = &entry.periods.last();
    entry.byPeriod.insert(slot.demand->period, slot.demand);
  }
  return slot;
}

GradeDemand &DemandRecorder::gradeEntry(const QString &grade) {
  GradeDemand *&entry = table_.byGrade[grade];
  if (entry == nullptr) {
    table_.grades.append(GradeDemand{grade, {}, {}});
    entry = &table_.grades.last();
  }
  return *entry;
}

void DemandRecorder::addTo(PeriodSlot &slot, double width, qint32 quantity) {
  const auto match = firstMatch(slot, {width, quantity});
  if (match == slot.entries.end()) {
    slot.demand->demands.append(DemandEntry{width, quantity});
    const NumberedEntry added{slot.demand->demands.size(), &slot.demand->demands.last()};
    slot.entries.emplace(WidthAndQuantity{width, quantity}, added);
    return;
  }
  const NumberedEntry found = match->second;
  slot.entries.erase(match);
  found.entry->quantity = saturatedSum(found.entry->quantity, quantity);
  slot.entries.emplace(WidthAndQuantity{width, found.entry->quantity}, found);
}

// Of several entries alike the one that stands first in the sequence.
DemandRecorder::EntryIndex::iterator DemandRecorder::firstMatch(PeriodSlot &slot,
                                                                const WidthAndQuantity &key) {
  const auto [begin, end] = slot.entries.equal_range(key);
  auto first = begin == end ? slot.entries.end() : begin;
  for (auto at = begin; at != end; ++at) {
    if (at->second.number < first->second.number) {
      first = at;
    }
  }
  return first;
}
