#pragma once

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace corvane {

// The fixed exchange sort: for every i, for every later j, swap when outOfOrder(at i, at j). Its
// order, that of ties included, is part of the behaviour wherever it is used; the cost grows with
// the square of the count.
template <typename Container, typename OutOfOrder>
void exchangeSort(Container &items, OutOfOrder outOfOrder) {
  for (auto i = items.begin(); i != items.end(); ++i) {
    for (auto j = std::next(i); j != items.end(); ++j) {
      if (outOfOrder(*i, *j)) {
        std::swap(*i, *j);
      }
    }
  }
}

// Sorts a sequence of distinct values ascending. They have one order, so the result is that of the
// exchange sort, at the cost of a fast one. REQUIRES values that "<" orders.
template <typename Sequence>
void sortDistinct(Sequence &items) {
  std::vector<typename Sequence::value_type> sorted(items.cbegin(), items.cend());
  std::sort(sorted.begin(), sorted.end());
  std::move(sorted.begin(), sorted.end(), items.begin());
}

}  // namespace corvane
