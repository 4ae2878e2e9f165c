#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <variant>
#include <vector>

#include "convert/number_format.h"
#include "convert/table_kinds.h"
#include "convert/text_decoding.h"

namespace corvane::convert {

// What a map says of one field. Whatever it leaves out is found in the header line.
struct FieldRule {
  QString column;                   // a name in the header line, or "#3" for the third column
  std::optional<QString> constant;  // the same text in every row, instead of a column
  std::optional<Unit> unit;
  std::optional<double> roundTo;
};

// What a map, or the command line, says of one table.
struct TableRules {
  std::map<QString, FieldRule> fields;  // by name
  std::optional<QChar> delimiter;
  std::optional<DecimalSign> decimal;
  std::optional<Encoding> encoding;
  bool hasHeader = true;
  int sheet = 1;  // of a workbook
};

// A whole map, by the name of the table kind.
using ColumnMap = std::map<QString, TableRules>;

// Reads a map: sections "[orders]", lines "KEY = VALUE", comments from "#" at a line's beginning.
// The faults, each with its line number in front, are empty when all of it was understood.
struct MapReading {
  ColumnMap map;
  QStringList faults;
};
MapReading readMap(const QString &text);

// A setting of a table, as maps and the command line have it: delimiter, decimal, encoding, header
// or sheet. Nothing when it was taken; otherwise what would be.
std::optional<QString> setTableRule(const QString &key, const QString &value, TableRules &rules);

// A map to start from, with comments: every table, field, key and unit.
QString mapTemplate();

// A text of a table or a map as a message shows it.
QString quoted(const QString &text);

// Where a field comes from in one table.
struct FieldSource {
  const Field *field = nullptr;
  int column = -1;  // from 0; -1 for a constant
  QString constant;
  Unit unit;
  std::optional<double> roundTo;
};

// The sources of all fields of a kind, in its order; the faults are empty when all were found.
struct ResolvedColumns {
  std::vector<FieldSource> sources;
  QStringList faults;
  int found = 0;  // how many have a source
};

// Looks for every field in the header line: by the map's column names, else by the names that a
// field is known by, where a unit may follow the name ("Width (mm)"). REQUIRES a header, or rules
// without one, which name columns by number.
ResolvedColumns resolveColumns(const TableKind &kind, const TableRules &rules,
                               const QStringList &header);

}  // namespace corvane::convert
