#pragma once

#include <QString>
#include <optional>
#include <variant>

#include "convert/column_map.h"

namespace corvane::convert {

// What one cell becomes in the data file, or why it cannot be taken.
struct ConvertedCell {
  QByteArray text;
  QString problem;  // empty when the cell was taken
};

// Converts a cell by what its field measures:
//  - a text loses the blanks at its ends, and blanks of other kinds inside become plain ones; one
//    that is empty, or holds what a data file or the model's names cannot (a comma, a double quote,
//    a control character), is not taken;
//  - a number is read with the table's decimal sign, converted from its unit and rounded, and
//  written
//    with as many digits as reading it back needs, without an exponent;
//  - a count is whole and from 1 to the largest 32-bit number.
ConvertedCell convertCell(const QString &cell, const FieldSource &source, DecimalSign sign);

// True for the fields whose cells are numbers.
bool isNumeric(Dimension dimension);

}  // namespace corvane::convert
