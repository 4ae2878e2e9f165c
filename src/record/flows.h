#pragma once

#include <vector>

#include "record/record.h"

namespace corvane::record {

// Adds the node and the arcs of a pattern that is about to be added to the record's patterns: from
// its cutter, to the cutter's stores of its widths and to where the cutter's other patterns give
// their waste. All nodes behind the patterns get a number one higher.
void addPatternNode(Record &record, const Pattern &pattern);

// The paper that the plan sends along the arcs, over all periods. REQUIRES a plan.
std::vector<Flow> flowsOf(const Record &record);

}  // namespace corvane::record
