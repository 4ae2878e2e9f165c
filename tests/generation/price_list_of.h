#pragma once

#include <limits>
#include <vector>

#include "generation/price_list.h"

namespace corvane {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

inline PriceList priceList(const std::vector<double> &widths, const std::vector<double> &duals) {
  PriceList prices;
  prices.rebuild(widths, duals);
  return prices;
}

}  // namespace corvane
