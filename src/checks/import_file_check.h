#pragma once

#include "checks/mill_records.h"

namespace corvane::checks {

// Checks an import file line by line: control characters, and what the reader of the network asks
// for: a whole file of one run, the grammar, declared names, arcs whose ends carry their commodity,
// commands that make sense together. A line with a fault is left out, and what others say of a name
// that only it declares is found too. What follows a first run is not looked at. The demand of a
// whole run is compared with the orders of the mill; null for none.
void checkImportFile(const SourceFile &file, const MillRecords *mill, FindingSink &sink);

}  // namespace corvane::checks
