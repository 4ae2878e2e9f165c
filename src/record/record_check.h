#pragma once

#include "record/record.h"

namespace corvane::record {

// The number of nodes of all groups.
int nodeCount(const Network &network);

// What is wrong with the record's indexes and list lengths; empty where every index leads
// somewhere.
QString faultOf(const Record &record);

}  // namespace corvane::record
