#pragma once

#include <vector>

#include "record/record.h"

namespace corvane::record {

// For each grade the least paper, inches, that its delivered rolls need over all periods, with
// whatever patterns of at most so many rolls on its deckles (more where a pattern of the record has
// more). Machine time and periods are left out, so no plan that delivers as much uses less.
// REQUIRES a plan.
std::vector<PaperBound> paperBounds(const Record &record, int mostRolls);

}  // namespace corvane::record
