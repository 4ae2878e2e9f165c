#include "plan/cut_table.h"

#include <algorithm>
#include <numeric>

namespace corvane::plan {

namespace {

// How many multisets of `rolls` elements there are.
double multisets(std::size_t widths, int rolls) {
  double count = 1;
  for (int i = 1; i <= rolls; ++i) {
    count *= (static_cast<double>(widths) + i - 1) / i;
  }
  return count;
}

}  // namespace

CutTable::CutTable(const std::vector<PricedWidth> &widths, int limit) {
  cuts_.push_back({0, 0, 0, 0, 0});
  double total = 1;
  std::size_t from = 0;
  while (rolls_ < limit) {
    total += multisets(widths.size(), rolls_ + 1);
    if (total > static_cast<double>(kMostCuts)) {
      break;
    }
    const std::size_t to = cuts_.size();
    addLayer(widths, from, to);
    from = to;
    ++rolls_;
  }
  keepBestByWidth();
}

void CutTable::addLayer(const std::vector<PricedWidth> &widths, std::size_t from, std::size_t to) {
  for (std::size_t parent = from; parent < to; ++parent) {
    const Entry base = cuts_[parent];
    for (std::size_t i = base.last; i < widths.size(); ++i) {
      cuts_.push_back(
          {base.width + widths[i].width, base.value + widths[i].value, i, parent, widths[i].index});
    }
  }
}

void CutTable::keepBestByWidth() {
  ascending_.resize(cuts_.size());
  std::iota(ascending_.begin(), ascending_.end(), 0U);
  std::stable_sort(ascending_.begin(), ascending_.end(), [this](std::size_t a, std::size_t b) {
    return cuts_[a].width < cuts_[b].width;
  });
  double best = -1;
  std::erase_if(ascending_, [&](std::size_t cut) {
    const bool isDominated = cuts_[cut].value <= best;
    best = std::max(best, cuts_[cut].value);
    return isDominated;
  });
}

std::size_t CutTable::bestWithin(double room) const {
  const auto behind =
      std::upper_bound(ascending_.begin(), ascending_.end(), room,
                       [this](double width, std::size_t cut) { return width < cuts_[cut].width; });
  return static_cast<std::size_t>(behind - ascending_.begin()) - 1;
}

std::vector<std::size_t> CutTable::rollsAt(std::size_t place) const {
  std::vector<std::size_t> rolls;
  for (std::size_t cut = ascending_[place]; cut != 0; cut = cuts_[cut].parent) {
    rolls.push_back(cuts_[cut].index);
  }
  return rolls;
}

}  // namespace corvane::plan
