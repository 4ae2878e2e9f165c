#pragma once

#include <QString>
#include <vector>

#include "convert/units.h"

namespace corvane::convert {

// A field of a data file: its name in maps, what it measures, and the column names by which it is
// known without a map, in the form of plainName().
struct Field {
  const char *name;
  Dimension dimension;
  const char *meaning;  // for the template of a map
  std::vector<const char *> knownAs;
};

// A data file that a table becomes: its section in maps, and its fields in the order of the file.
struct TableKind {
  const char *name;
  const char *fileName;
  std::vector<Field> fields;
  int sortedBy;  // the field that the rows are sorted by, or -1 where they stay as they are
};

// Machines, orders and freight rates.
const std::vector<TableKind> &tableKinds();

// The name without blanks, punctuation and upper case, which people write as they please.
QString plainName(const QString &name);

}  // namespace corvane::convert
