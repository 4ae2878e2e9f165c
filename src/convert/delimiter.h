#pragma once

#include <optional>

#include "convert/column_map.h"
#include "convert/table.h"

namespace corvane::convert {

// A table split at its delimiter, and where its columns are. The header is the one of the first
// ten rows that holds the most columns, since people write titles above it.
struct SplitTable {
  QChar delimiter;
  Table table;
  ResolvedColumns columns;
  std::size_t headerRow = 0;  // the index into the rows
};

// Splits the text at the delimiter of the rules; else at that of comma, semicolon, tab and bar by
// which the header line holds the most of the wanted columns (the first of equals). Without a
// header line it is the one that gives every row as many cells as the rules need. Nothing when no
// delimiter or more than one does that.
std::optional<SplitTable> splitTable(const QString &text, const TableKind &kind,
                                     const TableRules &rules);

// "comma", "semicolon", "tab" or "bar".
QString nameOfDelimiter(QChar delimiter);

}  // namespace corvane::convert
