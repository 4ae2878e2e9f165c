#pragma once

#include <vector>

#include "generation/generation_context.h"

namespace corvane {

// Generates patterns for one grade, period by period: solves the master LP, prices patterns from
// its dual values, adds them as columns, and so on until an iteration adds none. The patterns stay
// in the grade's sets. A period in which the grade has no demand takes the widths of the last
// earlier one that had some, with nothing demanded.
//
// deckleWidths are the grade's, ascending, inches. A fault of the solver ends the run.
void generateColumns(const GradeDemand &demand, const std::vector<double> &deckleWidths,
                     const GenerationContext &context);

}  // namespace corvane
