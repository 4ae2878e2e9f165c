#include "checks/units.h"

#include <algorithm>
#include <cmath>

namespace corvane::checks {

namespace {

constexpr double kMillimetres = 25.4;
constexpr double kCentimetres = 2.54;
constexpr double kInchesPerFoot = 12;

// No paper machine is wider, or narrower, in inches.
constexpr double kWidestDeckle = 480;
constexpr double kNarrowestDeckle = 25;

OtherUnit millimetres(double value) {
  return {"millimetres", value / kMillimetres};
}
OtherUnit centimetres(double value) {
  return {"centimetres", value / kCentimetres};
}
OtherUnit feet(double value) {
  return {"feet", value * kInchesPerFoot};
}

bool isAmong(double width, const std::vector<double> &others) {
  constexpr double kSame = 0.003;
  return std::any_of(others.begin(), others.end(),
                     [width](double other) { return std::fabs(width - other) <= kSame * other; });
}

}  // namespace

std::optional<OtherUnit> unitOfDeckle(double deckle, std::vector<double> others) {
  if (deckle > kWidestDeckle) {
    constexpr double kNarrow = 60;
    return deckle / kMillimetres >= kNarrow ? millimetres(deckle) : centimetres(deckle);
  }
  if (deckle < kNarrowestDeckle) {
    return feet(deckle);
  }
  // Centimetres look like a wide machine, unless the others are all about alike.
  constexpr std::size_t kEnough = 3;
  constexpr double kSpread = 1.6;
  constexpr double kFarAway = 2;
  if (others.size() < kEnough) {
    return std::nullopt;
  }
  std::sort(others.begin(), others.end());
  const double low = others.front();
  const double high = others.back();
  const double inches = deckle / kCentimetres;
  const bool fits = inches > low / kSpread && inches < high * kSpread;
  return high < kSpread * low && deckle > kFarAway * high && fits
             ? std::optional(centimetres(deckle))
             : std::nullopt;
}

std::optional<OtherUnit> unitOfWideRoll(double width, double widestDeckle,
                                        const std::vector<double> &others) {
  constexpr double kFarTooWide = 2.5;
  if (isAmong(width / kCentimetres, others)) {
    return centimetres(width);
  }
  const double inches = width / kMillimetres;
  constexpr double kNarrowestRoll = 4;
  if (isAmong(inches, others) ||
      (width > kFarTooWide * widestDeckle && inches >= kNarrowestRoll && inches <= widestDeckle)) {
    return millimetres(width);
  }
  return std::nullopt;
}

std::optional<OtherUnit> unitOfNarrowRoll(double width, const std::vector<double> &others) {
  constexpr double kFarTooNarrow = 0.4;
  if (others.empty()) {
    return std::nullopt;
  }
  const double narrowest = *std::min_element(others.begin(), others.end());
  return width < kFarTooNarrow * narrowest && isAmong(width * kInchesPerFoot, others)
             ? std::optional(feet(width))
             : std::nullopt;
}

}  // namespace corvane::checks
