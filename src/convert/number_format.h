#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace corvane::convert {

// The decimal sign of a table's numbers.
enum class DecimalSign { kPoint, kComma };

QChar characterOf(DecimalSign sign);

// A number as it stands in a table; line and column are counted from 1.
struct SeenNumber {
  QString text;
  int line = 0;
  int column = 0;
};

// What the numbers of a table tell of its decimal sign: the first number that can only be read with
// either sign, and the first that means something else with each, such as 1,200.
struct DecimalEvidence {
  std::optional<SeenNumber> forPoint;
  std::optional<SeenNumber> forComma;
  std::optional<SeenNumber> ambiguous;
};

// Adds what one number tells.
void gatherEvidence(const SeenNumber &number, DecimalEvidence &evidence);

// The number that a cell stands for, or nothing when it stands for none:
//   1200   -3.5   1,200.75   1 200   1'200    groups of three digits, by any usual mark
//   42 1/2   42-1/2   1/2   42½               fractions
//   $18.50   18.50 €                          a currency sign is left out
// A mark of the wrong width between groups, a second sign, an exponent or any other text makes it
// no number: what is doubtful is not taken.
std::optional<double> readNumber(const QString &cell, DecimalSign sign);

}  // namespace corvane::convert
