#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace corvane::convert {

// What a field measures, which tells the units that it may have.
enum class Dimension {
  kText,
  kCount,            // whole, at least 1
  kNumber,           // without a unit
  kLength,           // inches
  kWeightPerLength,  // pounds per inch of width
  kCostPerLength,    // money per inch
  kRate,             // money per 2000 pounds
};

struct Unit {
  double factor = 1;  // of the program's own unit, for one of this
  bool isOwn = true;  // the program's own: nothing is converted
};

// The unit of that name, or nothing when the dimension has none of it. Upper and lower case, blanks
// and a slash in front do not matter.
std::optional<Unit> unitNamed(Dimension dimension, const QString &name);

// The names of the units of a dimension, the program's own first.
QStringList unitNames(Dimension dimension);

// What converted numbers are rounded to, where the map says nothing else: a thousandth of an inch
// for widths, which no slitter meets and names in the model keep apart; a millionth for the others.
double defaultStep(Dimension dimension);

}  // namespace corvane::convert
