#include "generation/price_list.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "core/exchange_sort.h"

namespace corvane {

namespace {

bool isBetter(const RankedRow &a, const RankedRow &b) {
  return a.ratio > b.ratio;
}

// Puts the rows of one ratio, which stand from `first` on in a sorted ranking, into the order in
// which the fixed exchange sort leaves them. Its every pass picks up the element in front and walks
// to the end, where it meets a greater one lays down there what it carries and picks that up. As
// the ties see it, a pass takes away the first of the elements greater than they are, and where
// ties stand before that one, the first of these goes to its place, behind the others.
void orderTies(const std::vector<RankedRow> &byRow, std::vector<RankedRow>::iterator first) {
  const double ratio = first->ratio;
  std::vector<RankedRow> ties;
  std::size_t front = 0;
  for (const RankedRow &row : byRow) {
    if (row.ratio == ratio) {
      ties.push_back(row);
    } else if (row.ratio > ratio && front < ties.size()) {
      ties.push_back(ties[front++]);
    }
  }
  std::copy(ties.begin() + static_cast<std::ptrdiff_t>(front), ties.end(), first);
}

// Best ratio first, equal ratios where the fixed exchange sort leaves them.
void sortByRatio(std::vector<RankedRow> &ranking) {
  const bool areNumbers = std::none_of(ranking.begin(), ranking.end(),
                                       [](const RankedRow &row) { return std::isnan(row.ratio); });
  if (!areNumbers) {
    exchangeSort(ranking, [](const RankedRow &a, const RankedRow &b) { return isBetter(b, a); });
    return;
  }
  const std::vector<RankedRow> byRow = ranking;
  std::sort(ranking.begin(), ranking.end(), isBetter);
  for (auto first = ranking.begin(); first != ranking.end();) {
    const auto last = std::find_if(first, ranking.end(),
                                   [first](const RankedRow &row) { return isBetter(*first, row); });
    if (last - first > 1) {
      orderTies(byRow, first);
    }
    first = last;
  }
}

}  // namespace

void PriceList::rebuild(const std::vector<double> &widths, const std::vector<double> &duals) {
  std::vector<RankedRow> ranking;
  ranking.reserve(widths.size());
  for (std::size_t row = 0; row < widths.size(); ++row) {
    ranking.push_back({widths[row] == 0.0 ? 0.0 : duals[row] / widths[row], row});
  }
  sortByRatio(ranking);
  entries_.clear();
  entries_.reserve(widths.size());
  for (const RankedRow &ranked : ranking) {
    entries_.push_back({widths[ranked.row], duals[ranked.row], ranked.ratio});
  }
  hasUnorderedDuals_ = std::any_of(entries_.begin(), entries_.end(),
                                   [](const PriceEntry &entry) { return std::isnan(entry.dual); });
  buildFittingTable(ranking);
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

// A binary search without branches that depend on what is found: those of std::upper_bound are
// mispredicted half of the time, which would cost more than the rest of a pick.
int PriceList::lookUpBestFitting(double freeWidth) const {
  const FittingEntry *entry = byWidth_.data();
  std::size_t left = byWidth_.size();
  if (left == 0 || !(entry->width <= freeWidth)) {
    return kNone;
  }
  while (left > 1) {
    const std::size_t half = left / 2;
    entry += entry[half].width <= freeWidth ? half : 0;
    left -= half;
  }
  return entry->best;
}

void PriceList::buildFittingTable(const std::vector<RankedRow> &ranking) {
  byWidth_.resize(ranking.size());
  int index = 0;
  for (const RankedRow &ranked : ranking) {
    byWidth_[ranking.size() - 1 - ranked.row] = {(*this)[index].width, index};
    ++index;
  }
  const auto isNarrower = [](const FittingEntry &a, const FittingEntry &b) {
    return a.width < b.width;
  };
  // Rows run from the widest to the narrowest as a rule.
  if (!std::is_sorted(byWidth_.begin(), byWidth_.end(), isNarrower)) {
    std::sort(byWidth_.begin(), byWidth_.end(), isNarrower);
  }
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
