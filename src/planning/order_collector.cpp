#include "planning/order_collector.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "core/exchange_sort.h"
#include "core/numbers.h"

namespace {

// No quantity is negative; that of an order from an empty line is 0.
constexpr qint32 kNoEntry = -1;

// Sorts the items by a key from 0 to keys - 1; equal ones keep their order. Counting sort, D. E.
// Knuth, "The Art of Computer Programming", vol. 3, section 5.2. The items themselves are moved:
// following indexes to them would miss the cache at every step.
template <typename Item, typename KeyOf>
void countingSort(std::vector<Item> &items, std::size_t keys, KeyOf keyOf) {
  std::vector<std::size_t> begins(keys + 1, 0);
  for (const Item &item : items) {
    ++begins[keyOf(item) + 1];
  }
  std::partial_sum(begins.begin(), begins.end(), begins.begin());
  std::vector<Item> sorted(items.size());
  for (const Item &item : items) {
    sorted[begins[keyOf(item)]++] = item;
  }
  items.swap(sorted);
}

// For every item its place in ascending order. The items are distinct.
template <typename Item, typename Less>
std::vector<quint32> ranksOf(const std::vector<Item> &items, Less less) {
  std::vector<quint32> sorted(items.size());
  std::iota(sorted.begin(), sorted.end(), 0U);
  std::sort(sorted.begin(), sorted.end(),
            [&](quint32 a, quint32 b) { return less(items[a], items[b]); });
  std::vector<quint32> ranks(items.size());
  for (quint32 rank = 0; rank < sorted.size(); ++rank) {
    ranks[sorted[rank]] = rank;
  }
  return ranks;
}

// The number of the key, which gets the next one when it is new.
template <typename Key, typename Item>
quint32 numberOf(std::unordered_map<Key, quint32> &numbers, const Key &key,
                 std::vector<Item> &items, const Item &item) {
  const auto [entry, isNew] = numbers.try_emplace(key, static_cast<quint32>(items.size()));
  if (isNew) {
    items.push_back(item);
  }
  return entry->second;
}

}  // namespace

void OrderCollector::add(TextTable::Id grade, TextTable::Id period, TextTable::Id customer,
                         double width, qint32 quantity) {
  const quint32 slot =
      numberOf(numberOfSlot_, quint64{grade} << 32U | period, slots_, Slot{grade, period});
  const quint32 widthNumber = numberOf(numberOfWidth_, width, widths_, width);
  rows_.push_back({slot, widthNumber, customer, quantity, static_cast<quint32>(rows_.size())});
}

void OrderCollector::finish() {
  textRanks_ = texts_.ranks();
  slotRanks_ = ranksOf(slots_, [this](const Slot &a, const Slot &b) {
    return std::pair(textRanks_[a.grade], textRanks_[a.period]) <
           std::pair(textRanks_[b.grade], textRanks_[b.period]);
  });
  Rows merged = mergeGroups(sortedBySlotAndWidth());
  fillDemand();
  fillGradesAndPeriods();
  fillOrders(merged);
}

OrderCollector::Rows OrderCollector::sortedBySlotAndWidth() const {
  Rows sorted = rows_;
  const std::vector<quint32> widthRanks = ranksOf(widths_, std::less<>());
  countingSort(sorted, widths_.size(), [&](const Row &row) { return widthRanks[row.width]; });
  countingSort(sorted, slots_.size(), [this](const Row &row) { return slotRanks_[row.slot]; });
  return sorted;
}

OrderCollector::Rows OrderCollector::mergeGroups(const Rows &sorted) {
  entryQuantities_.assign(rows_.size(), kNoEntry);
  mergedOfCustomer_.assign(textRanks_.size(), 0);
  Rows merged;
  merged.reserve(sorted.size());
  for (auto begin = sorted.begin(); begin != sorted.end();) {
    const auto end = std::find_if(begin, sorted.end(), [&first = *begin](const Row &row) {
      return row.width != first.width || row.slot != first.slot;
    });
    mergeGroup({begin, end}, merged);
    begin = end;
  }
  return merged;
}

void OrderCollector::mergeGroup(std::span<const Row> group, Rows &merged) {
  const std::size_t before = merged.size();
  for (const Row &row : group) {
    std::size_t &known = mergedOfCustomer_[row.customer];
    if (known > before) {
      Row &stored = merged[known - 1];
      stored.quantity = saturatedSum(stored.quantity, row.quantity);
      matcher_.add(row.number, stored.quantity);
    } else {
      merged.push_back(row);
      known = merged.size();
      matcher_.add(row.number, row.quantity);
    }
  }
  for (const DemandMatcher::Entry &entry : matcher_.entries()) {
    entryQuantities_[entry.row] = entry.quantity;
  }
  matcher_.clear();
}

// The first row of a slot always begins an entry, so no slot stays empty.
void OrderCollector::fillDemand() {
  std::vector<PeriodDemand *> demands;
  for (const Slot &slot : slots_) {
    demands.push_back(&data_.demand.addPeriod(texts_.text(slot.grade), texts_.text(slot.period)));
  }
  for (const Row &row : rows_) {
    if (const qint32 quantity = entryQuantities_[row.number]; quantity != kNoEntry) {
      demands[row.slot]->demands.append(DemandEntry{widths_[row.width], quantity});
    }
  }
}

void OrderCollector::fillGradesAndPeriods() {
  std::vector<char> isGrade(textRanks_.size(), 0);
  std::vector<char> isPeriod(textRanks_.size(), 0);
  for (const Slot &slot : slots_) {
    if (std::exchange(isGrade[slot.grade], 1) == 0) {
      data_.grades.append(texts_.text(slot.grade));
    }
    if (std::exchange(isPeriod[slot.period], 1) == 0) {
      data_.periods.append(texts_.text(slot.period));
    }
  }
  sortDistinct(data_.grades);
  for (QString &grade : data_.grades) {
    data_.names.append(&grade);
  }
}

void OrderCollector::fillOrders(Rows &merged) {
  countingSort(merged, textRanks_.size(),
               [this](const Row &row) { return textRanks_[row.customer]; });
  countingSort(merged, slots_.size(), [this](const Row &row) { return slotRanks_[row.slot]; });
  for (const Row &row : merged) {
    std::unique_ptr<Order> order = orderOf(row);
    data_.orders.append(order.get());
    (void)order.release();
  }
}

std::unique_ptr<Order> OrderCollector::orderOf(const Row &row) const {
  const Slot &slot = slots_[row.slot];
  auto order = std::make_unique<Order>();
  order->grade = texts_.text(slot.grade);
  order->customerName = texts_.text(row.customer);
  order->width = widths_[row.width];
  order->quantity = row.quantity;
  order->period = texts_.text(slot.period);
  return order;
}
