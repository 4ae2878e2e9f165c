#include "plan/cut_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace corvane::plan {

namespace {

// Units that widths are tried in are these parts of an inch; the widths' greatest common divisor
// then makes the unit as large as can be.
constexpr double kParts[] = {64, 1000};
// Inches: what a number that is written in decimals, or added up, may differ from its multiple by.
// All rolls of a cut together stay below the tolerance for fitting.
constexpr double kGridNoise = 1e-12;

// The widths as numbers of the part of an inch, or nothing.
std::vector<std::size_t> multiples(const std::vector<PricedWidth> &widths, double parts) {
  std::vector<std::size_t> counts;
  for (const PricedWidth &width : widths) {
    const double count = std::round(width.width * parts);
    if (count < 1 || std::fabs(width.width - count / parts) > kGridNoise) {
      return {};
    }
    counts.push_back(static_cast<std::size_t>(count));
  }
  return counts;
}

}  // namespace

CutGrid::CutGrid(const std::vector<PricedWidth> &widths, double room, int limit)
    : widths_(widths), limit_(static_cast<std::size_t>(std::max(limit, 0))) {
  findUnit(room);
}

void CutGrid::findUnit(double room) {
  for (const double parts : kParts) {
    units_ = multiples(widths_, parts);
    if (!units_.empty()) {
      const std::size_t divisor =
          std::accumulate(units_.begin(), units_.end(), std::size_t{0},
                          [](std::size_t a, std::size_t b) { return std::gcd(a, b); });
      for (std::size_t &units : units_) {
        units /= divisor;
      }
      rooms_ = 1 + static_cast<std::size_t>(room * parts / static_cast<double>(divisor));
      limit_ = std::min(limit_, rooms_ / *std::min_element(units_.begin(), units_.end()));
      return;
    }
  }
}

double CutGrid::work() const {
  return units_.empty() ? std::numeric_limits<double>::infinity()
                        : static_cast<double>(rooms_) * static_cast<double>(limit_) *
                              static_cast<double>(units_.size());
}

void CutGrid::addRoll(const double *fewer, double *more) const {
  std::copy_n(fewer, rooms_, more);
  for (std::size_t i = 0; i < units_.size(); ++i) {
    const double value = widths_[i].value;
    double *const behind = more + std::min(units_[i], rooms_);
    const std::size_t count = rooms_ - std::min(units_[i], rooms_);
    for (std::size_t room = 0; room < count; ++room) {
      const double worth = fewer[room] + value;
      behind[room] = behind[room] < worth ? worth : behind[room];
    }
  }
}

CutGrid::Best CutGrid::best() const {
  std::vector<double> worth((limit_ + 1) * rooms_, 0.0);
  const auto of = [&](std::size_t rolls) { return worth.data() + rolls * rooms_; };
  for (std::size_t rolls = 1; rolls <= limit_; ++rolls) {
    addRoll(of(rolls - 1), of(rolls));
  }
  Best best{of(limit_)[rooms_ - 1], {}};
  std::size_t room = rooms_ - 1;
  for (std::size_t rolls = limit_; rolls > 0; --rolls) {
    const double left = of(rolls)[room];
    for (std::size_t i = 0; left != of(rolls - 1)[room] && i < units_.size(); ++i) {
      if (units_[i] <= room && of(rolls - 1)[room - units_[i]] + widths_[i].value == left) {
        best.rolls.push_back(widths_[i].index);
        room -= units_[i];
        break;
      }
    }
  }
  return best;
}

}  // namespace corvane::plan
