#include "convert/delimiter.h"

#include <algorithm>
#include <array>

namespace corvane::convert {

namespace {

struct NamedDelimiter {
  char16_t character;
  const char *name;
};

constexpr std::array kDelimiters = {NamedDelimiter{u',', "comma"},
                                    NamedDelimiter{u';', "semicolon"}, NamedDelimiter{u'\t', "tab"},
                                    NamedDelimiter{u'|', "bar"}};

// How far down a header line is looked for.
constexpr std::size_t kTitleRows = 10;

SplitTable splitAt(const QString &text, QChar delimiter, const TableKind &kind,
                   const TableRules &rules) {
  SplitTable split{delimiter, parseTable(text, delimiter), {}, 0};
  const auto &rows = split.table.rows;
  split.columns = resolveColumns(kind, rules, rows.empty() ? QStringList() : rows.front().cells);
  for (std::size_t i = 1; rules.hasHeader && i < std::min(rows.size(), kTitleRows); ++i) {
    ResolvedColumns columns = resolveColumns(kind, rules, rows[i].cells);
    if (columns.found > split.columns.found) {
      split.columns = std::move(columns);
      split.headerRow = i;
    }
  }
  return split;
}

// Whether every row is as long as the last column that is needed asks for, and all are alike.
bool givesRegularRows(const SplitTable &split) {
  int needed = 0;
  for (const FieldSource &source : split.columns.sources) {
    needed = std::max(needed, source.column + 1);
  }
  const auto &rows = split.table.rows;
  return !rows.empty() && rows.front().cells.size() >= needed &&
         std::all_of(rows.begin(), rows.end(), [&rows](const TableRow &row) {
           return row.cells.size() == rows.front().cells.size();
         });
}

}  // namespace

std::optional<SplitTable> splitTable(const QString &text, const TableKind &kind,
                                     const TableRules &rules) {
  if (rules.delimiter) {
    return splitAt(text, *rules.delimiter, kind, rules);
  }
  std::optional<SplitTable> best;
  int regular = 0;
  for (const NamedDelimiter &delimiter : kDelimiters) {
    SplitTable split = splitAt(text, QChar(delimiter.character), kind, rules);
    if (rules.hasHeader ? !best || split.columns.found > best->columns.found
                        : givesRegularRows(split)) {
      best = std::move(split);
      ++regular;
    }
  }
  return rules.hasHeader || regular == 1 ? best : std::nullopt;
}

QString nameOfDelimiter(QChar delimiter) {
  for (const NamedDelimiter &known : kDelimiters) {
    if (delimiter == QChar(known.character)) {
      return QLatin1String(known.name);
    }
  }
  return {};
}

}  // namespace corvane::convert
