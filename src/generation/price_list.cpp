#include "generation/price_list.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/exchange_sort.h"

namespace corvane {

void PriceList::rebuild(const std::vector<double> &widths, const std::vector<double> &duals) {
  entries_.clear();
  entries_.reserve(widths.size());
  for (std::size_t row = 0; row < widths.size(); ++row) {
    const double ratio = widths[row] == 0.0 ? 0.0 : duals[row] / widths[row];
    entries_.push_back({widths[row], duals[row], ratio});
  }
  exchangeSort(entries_,
               [](const PriceEntry &a, const PriceEntry &b) { return b.ratio > a.ratio; });
  hasUnorderedDuals_ = std::any_of(entries_.begin(), entries_.end(),
                                   [](const PriceEntry &entry) { return std::isnan(entry.dual); });
  buildFittingTable();
}

int PriceList::bestFitting(double freeWidth) const {
  return hasUnorderedDuals_ ? scanForBestFitting(freeWidth) : lookUpBestFitting(freeWidth);
}

int PriceList::scanForBestFitting(double freeWidth) const {
  double bestDual = 0.0;
  int best = kNone;
  for (int index = 0; index < count(); ++index) {
    const PriceEntry &entry = (*this)[index];
    if (entry.width <= freeWidth && !(entry.dual < bestDual)) {
      best = index;
      bestDual = entry.dual;
    }
  }
  return best;
}

int PriceList::lookUpBestFitting(double freeWidth) const {
  const auto wider =
      std::upper_bound(byWidth_.begin(), byWidth_.end(), freeWidth,
                       [](double width, const FittingEntry &entry) { return width < entry.width; });
  return wider == byWidth_.begin() ? kNone : std::prev(wider)->best;
}

void PriceList::buildFittingTable() {
  byWidth_.clear();
  for (int index = 0; index < count(); ++index) {
    byWidth_.push_back({(*this)[index].width, index});
  }
  std::sort(byWidth_.begin(), byWidth_.end(),
            [](const FittingEntry &a, const FittingEntry &b) { return a.width < b.width; });
  int best = kNone;
  for (FittingEntry &entry : byWidth_) {
    const double dual = (*this)[entry.best].dual;
    const double bestDual = best == kNone ? 0.0 : (*this)[best].dual;
    if (dual > bestDual || (dual == bestDual && entry.best > best)) {
      best = entry.best;
    }
    entry.best = best;
  }
}

}  // namespace corvane
