#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace corvane::convert {

struct TableRow {
  int line = 0;  // where the row begins, from 1
  QStringList cells;
};

// Where a table cannot be read.
struct TableFault {
  int line = 0;
  QString text;
};

struct Table {
  std::vector<TableRow> rows;
  std::optional<TableFault> fault;  // the rows before it are there
};

// Reads a table as RFC 4180 has it, with any one delimiter: fields in quotes may hold the
// delimiter, doubled quotes and line ends. Lines end with a line feed, a carriage return or both;
// the last one needs no end. Rows that are empty, or whose cells all are, are left out. Text behind
// a closing quote, or a quote that nothing closes, is a fault.
Table parseTable(const QString &text, QChar delimiter);

}  // namespace corvane::convert
