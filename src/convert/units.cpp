#include "convert/units.h"

#include <vector>

namespace corvane::convert {

namespace {

// International inch and pound (1959).
constexpr double kInchesPerMillimetre = 1 / 25.4;
constexpr double kPoundsPerKilogram = 1 / 0.45359237;
constexpr double kRatePounds = 2000;

struct NamedUnit {
  const char *name;
  double factor;
};

const std::vector<NamedUnit> &unitsOf(Dimension dimension) {
  static const std::vector<NamedUnit> kNone;
  static const std::vector<NamedUnit> kLengths = {
      {"in", 1},
      {"inch", 1},
      {"inches", 1},
      {"ft", 12},
      {"mm", kInchesPerMillimetre},
      {"cm", 10 * kInchesPerMillimetre},
      {"m", 1000 * kInchesPerMillimetre},
  };
  static const std::vector<NamedUnit> kWeights = {
      {"lb/in", 1},
      {"lb", 1},
      {"lbs", 1},
      {"kg", kPoundsPerKilogram},
      {"kg/in", kPoundsPerKilogram},
      {"kg/mm", kPoundsPerKilogram / kInchesPerMillimetre},
      {"kg/cm", kPoundsPerKilogram / (10 * kInchesPerMillimetre)},
      {"kg/m", kPoundsPerKilogram / (1000 * kInchesPerMillimetre)},
  };
  static const std::vector<NamedUnit> kCosts = {
      {"in", 1},
      {"mm", 1 / kInchesPerMillimetre},
      {"cm", 1 / (10 * kInchesPerMillimetre)},
      {"m", 1 / (1000 * kInchesPerMillimetre)},
  };
  static const std::vector<NamedUnit> kRates = {
      {"2000 lb", 1},
      {"lb", kRatePounds},
      {"cwt", kRatePounds / 100},
      {"kg", kRatePounds / kPoundsPerKilogram},
      {"100 kg", kRatePounds / (100 * kPoundsPerKilogram)},
      {"t", kRatePounds / (1000 * kPoundsPerKilogram)},
  };
  switch (dimension) {
    case Dimension::kLength:
      return kLengths;
    case Dimension::kWeightPerLength:
      return kWeights;
    case Dimension::kCostPerLength:
      return kCosts;
    case Dimension::kRate:
      return kRates;
    default:
      return kNone;
  }
}

QString plain(QString name) {
  name = name.toLower().remove(QLatin1Char(' '));
  return name.startsWith(QLatin1Char('/')) ? name.mid(1) : name;
}

}  // namespace

std::optional<Unit> unitNamed(Dimension dimension, const QString &name) {
  const QString wanted = plain(name);
  for (const NamedUnit &unit : unitsOf(dimension)) {
    if (plain(QLatin1String(unit.name)) == wanted) {
      return Unit{unit.factor, unit.factor == 1};
    }
  }
  return std::nullopt;
}

QStringList unitNames(Dimension dimension) {
  QStringList names;
  for (const NamedUnit &unit : unitsOf(dimension)) {
    names << QLatin1String(unit.name);
  }
  return names;
}

double defaultStep(Dimension dimension) {
  return dimension == Dimension::kLength ? 1e-3 : 1e-6;
}

}  // namespace corvane::convert
