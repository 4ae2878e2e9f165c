#pragma once

#include "checks/mill_records.h"

namespace corvane::checks {

// Checks an import file: control characters in every line, and then, up to the first fault, what
// the reader of the network asks for: a whole file of one run, the grammar, declared names, arcs
// whose ends carry their commodity. Where all of that holds and there is a mill, its orders are
// compared with the demand of the file; null for none.
void checkImportFile(const SourceFile &file, const MillRecords *mill, FindingSink &sink);

}  // namespace corvane::checks
