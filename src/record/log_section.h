#pragma once

#include <QByteArray>

#include "record/record.h"

namespace corvane::record {

// Reads the last section of a log; an empty one of a log that has none. A section without its end
// banner is of a run that failed, or one that is not over.
LogSection lastSection(const QByteArray &log);

}  // namespace corvane::record
