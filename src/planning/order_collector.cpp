#include "planning/order_collector.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "core/exchange_sort.h"
#include "core/numbers.h"
#include "core/skip_list_appender.h"

namespace corvane {

namespace {

// No quantity is negative; that of an order from an empty line is 0.
constexpr qint32 kNoEntry = -1;

// More keys an item than this make a sort by comparison cheaper than counting.
constexpr std::size_t kKeysAnItem = 8;

// Gives the items sorted by a key from 0 to keys - 1; equal ones keep their order. Counting sort,
// D. E. Knuth, "The Art of Computer Programming", vol. 3, section 5.2, unless the keys by far
// outnumber the items. The items themselves are moved, so that what follows reads them in order.
template <typename Items, typename Item, typename KeyOf>
void sortByKey(const Items &items, std::size_t keys, KeyOf keyOf, std::vector<Item> &sorted) {
  if (keys / kKeysAnItem > items.size()) {
    sorted.assign(items.begin(), items.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const Item &a, const Item &b) { return keyOf(a) < keyOf(b); });
    return;
  }
  std::vector<quint32> begins(keys + 1, 0);
  for (const Item &item : items) {
    ++begins[keyOf(item) + 1];
  }
  std::partial_sum(begins.begin(), begins.end(), begins.begin());
  sorted.resize(items.size());
  for (const Item &item : items) {
    sorted[begins[keyOf(item)]++] = item;
  }
}

// The numbers of the items in ascending order of the items, which are distinct.
template <typename Item, typename Less>
std::vector<quint32> sortedNumbers(const std::vector<Item> &items, Less less) {
  std::vector<quint32> sorted(items.size());
  std::iota(sorted.begin(), sorted.end(), 0U);
  std::sort(sorted.begin(), sorted.end(),
            [&](quint32 a, quint32 b) { return less(items[a], items[b]); });
  return sorted;
}

// For every item its place in a sequence of all.
std::vector<quint32> placesIn(const std::vector<quint32> &sequence) {
  std::vector<quint32> places(sequence.size());
  for (quint32 place = 0; place < sequence.size(); ++place) {
    places[sequence[place]] = place;
  }
  return places;
}

}  // namespace

quint32 OrderCollector::numberOf(const OrderTexts::Place &place) {
  const auto [entry, isNew] = numberOfSlot_.try_emplace(quint64{place.grade} << 32U | place.period,
                                                        static_cast<quint32>(slots_.size()));
  if (isNew) {
    slots_.push_back({place.grade, place.period, {}, nullptr});
  }
  return entry->second;
}

quint32 OrderCollector::numberOf(const OrderTexts::Width &width) {
  const auto [entry, isNew] =
      numberOfWidth_.try_emplace(width.inches, static_cast<quint32>(widths_.size()));
  if (isNew) {
    widths_.push_back(width.inches);
  }
  return entry->second;
}

void OrderCollector::add(OrderTexts::Place &place, OrderTexts::Width &width, TextTable::Id customer,
                         qint32 quantity) {
  if (place.number == OrderTexts::kNoNumber) {
    place.number = numberOf(place);
  }
  if (width.number == OrderTexts::kNoNumber) {
    width.number = numberOf(width);
  }
  std::deque<Row> &rows = slots_[place.number].rows;
  rows.push_back({width.number, customer, quantity, static_cast<quint32>(rows.size())});
}

void OrderCollector::finish() {
  textRanks_ = texts_.ranks();
  widthRanks_ = placesIn(sortedNumbers(widths_, std::less<>()));
  mergedOfCustomer_.assign(textRanks_.size(), 0);
  for (Slot &slot : slots_) {
    slot.demand = &data_.demand.addPeriod(texts_.text(slot.grade), texts_.text(slot.period));
  }
  fillGradesAndPeriods();
  for (const quint32 number : sortedNumbers(slots_, [this](const Slot &a, const Slot &b) {
         return std::pair(textRanks_[a.grade], textRanks_[a.period]) <
                std::pair(textRanks_[b.grade], textRanks_[b.period]);
       })) {
    finishSlot(slots_[number]);
  }
  for (GradeDemand &grade : data_.demand.grades) {
    grade.gatherWidths();
  }
}

void OrderCollector::finishSlot(Slot &slot) {
  sortByKey(
      slot.rows, widths_.size(), [this](const Row &row) { return widthRanks_[row.width]; },
      sorted_);
  mergeSorted(slot.demand->firstOfWidths);
  fillDemand(slot);
  slot.rows = {};
  sortByKey(
      merged_, textRanks_.size(), [this](const Row &row) { return textRanks_[row.customer]; },
      sorted_);
  // Merged orders have keys of their own, and slots come in the order of grades and periods.
  SkipListAppender<Order> orders(data_.orders);
  for (const Row &row : sorted_) {
    std::unique_ptr<Order> order = orderOf(slot, row);
    orders.append(order.get());
    (void)order.release();
  }
}

void OrderCollector::mergeSorted(std::vector<DemandEntry> &firstOfWidths) {
  entryQuantities_.assign(sorted_.size(), kNoEntry);
  merged_.clear();
  for (auto begin = sorted_.begin(); begin != sorted_.end();) {
    const auto end = std::find_if(begin, sorted_.end(), [width = begin->width](const Row &row) {
      return row.width != width;
    });
    firstOfWidths.push_back({widths_[begin->width], mergeGroup({begin, end})});
    begin = end;
  }
  std::reverse(firstOfWidths.begin(), firstOfWidths.end());
  mergedBefore_ += merged_.size();
}

qint32 OrderCollector::mergeGroup(std::span<const Row> group) {
  const std::size_t before = mergedBefore_ + merged_.size();
  for (const Row &row : group) {
    std::size_t &known = mergedOfCustomer_[row.customer];
    if (known > before) {
      Row &stored = merged_[known - 1 - mergedBefore_];
      stored.quantity = saturatedSum(stored.quantity, row.quantity);
      matcher_.add(row.number, stored.quantity);
    } else {
      merged_.push_back(row);
      known = mergedBefore_ + merged_.size();
      matcher_.add(row.number, row.quantity);
    }
  }
  for (const DemandMatcher::Entry &entry : matcher_.entries()) {
    entryQuantities_[entry.row] = entry.quantity;
  }
  const qint32 first = matcher_.entries().front().quantity;
  matcher_.clear();
  return first;
}

// The first row of a slot always begins an entry, so no slot stays empty.
void OrderCollector::fillDemand(const Slot &slot) {
  for (const Row &row : slot.rows) {
    if (const qint32 quantity = entryQuantities_[row.number]; quantity != kNoEntry) {
      slot.demand->demands.append(DemandEntry{widths_[row.width], quantity});
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

std::unique_ptr<Order> OrderCollector::orderOf(const Slot &slot, const Row &row) const {
  return std::make_unique<Order>(Order{texts_.text(slot.grade), texts_.text(row.customer),
                                       widths_[row.width], row.quantity, 1,
                                       texts_.text(slot.period)});
}

}  // namespace corvane
