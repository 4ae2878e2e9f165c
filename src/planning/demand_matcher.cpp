#include "planning/demand_matcher.h"

#include <algorithm>
#include <functional>

#include "core/numbers.h"

namespace corvane {

void DemandMatcher::add(quint32 row, qint32 quantity) {
  std::vector<std::size_t> &equal = byQuantity_[quantity];
  if (equal.empty()) {
    equal.push_back(entries_.size());
    entries_.push_back({row, quantity});
    return;
  }
  std::pop_heap(equal.begin(), equal.end(), std::greater<>());
  const std::size_t first = equal.back();
  equal.pop_back();
  Entry &entry = entries_[first];
  entry.quantity = saturatedSum(entry.quantity, quantity);
  std::vector<std::size_t> &grown = byQuantity_[entry.quantity];
  grown.push_back(first);
  std::push_heap(grown.begin(), grown.end(), std::greater<>());
}

void DemandMatcher::clear() {
  for (const Entry &entry : entries_) {
    byQuantity_[entry.quantity].clear();
  }
  entries_.clear();
}

}  // namespace corvane
