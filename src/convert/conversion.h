#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "convert/column_map.h"
#include "convert/table.h"

namespace corvane::convert {

// Something in a table that cannot be taken. Line and column are counted from 1; 0 where the
// problem is the table's as a whole.
struct Problem {
  int line = 0;
  int column = 0;
  QString text;
};

// What became of one table: the lines of the data file, or the problems that are in the way; and
// what was found out on the way, which a person should hear.
struct Conversion {
  QByteArray data;  // UTF-8, every line with its line break; empty when there is a problem
  int rows = 0;
  std::vector<Problem> problems;
  QStringList notes;
};

// Turns the bytes of a table into a data file by the rules. Encoding, delimiter and decimal sign
// are found out where the rules leave them open: the delimiter is the one by which the header line
// holds the columns, the decimal sign the one by which all numbers are numbers. What stays doubtful
// is a problem, never a guess.
Conversion convertTable(const QByteArray &bytes, const TableKind &kind, const TableRules &rules);

}  // namespace corvane::convert
