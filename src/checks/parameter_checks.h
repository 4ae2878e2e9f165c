#pragma once

#include <QHash>

#include "checks/mill_records.h"

namespace corvane::checks {

// Where the parameter file sets what, by key.
using ParameterLines = QHash<QString, quint32>;

// Reads the parameter file, which is there, into the parameters by the rules of the program's
// reader, and reports what is wrong with it. The lines are those whose value counts.
ParameterLines readParameterFile(MillRecords &mill, FindingSink &sink);

}  // namespace corvane::checks
