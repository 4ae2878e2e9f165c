#pragma once

#include <QByteArray>

#include "record/record.h"

namespace corvane::record {

// Reads a plan (schema corvane-plan/1) of the import file that the record was filled from. Patterns
// that the plan offered beyond the file are added to the record. False, with the fault, for what is
// no plan, has faults of its own, or is of another import file; the record is then of no use.
bool readPlan(Record &record, const QByteArray &json, QString &fault);

}  // namespace corvane::record
