#include "generation/width_tally.h"

#include <algorithm>
#include <functional>

#include "core/exchange_sort.h"

namespace corvane {

void tallyWidths(const QLinkedList<double> &widths, std::vector<TallyEntry> &tally) {
  tally.clear();
  for (const double width : widths) {
    const auto known = std::find_if(tally.begin(), tally.end(), [width](const TallyEntry &entry) {
      return entry.width == width;
    });
    if (known != tally.end()) {
      ++known->count;
    } else {
      tally.push_back({width, 1});
    }
  }
  exchangeSort(tally, [](const TallyEntry &a, const TallyEntry &b) { return b.width > a.width; });
}

int rowOf(double width, const std::vector<double> &rowWidths) {
  const auto row = std::lower_bound(rowWidths.begin(), rowWidths.end(), width, std::greater<>());
  return static_cast<int>(row - rowWidths.begin());
}

}  // namespace corvane
