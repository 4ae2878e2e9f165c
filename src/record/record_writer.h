#pragma once

#include <QByteArray>

#include "record/record.h"

namespace corvane::record {

// The record as JSON (schema corvane-run/1), one list element a line, with a line end at the end.
// The same record gives the same bytes. They hold no "<" (it is escaped in texts), so that they can
// stand inside a page as they are.
QByteArray toJson(const Record &record);

}  // namespace corvane::record
