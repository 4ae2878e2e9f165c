#pragma once

#include <vector>

#include "generation/generation_context.h"

namespace corvane {

// The whole of pattern generation: the steps below in their order, and solveFinalLps after the
// first. Afterwards the sets hold the patterns of the model. REQUIRES the planning data; faults end
// the run.
void generatePatterns(const GenerationContext &context);

// Seeds the generator, creates the pattern sets and generates columns, grade by grade.
void generateAllColumns(const GenerationContext &context);

// Marks the patterns that enter the model, set by set, and reports every demand width that too few
// of them hold, on standard output and in the log.
void chooseAndReportPatterns(const GenerationContext &context);

// The grade's distinct deckle widths, ascending, and an empty pattern set for each, created in the
// order of the cutters. cutters are those of the grade, in list order.
std::vector<double> createPatternSets(const QString &grade,
                                      const std::vector<const Cutter *> &cutters,
                                      PatternSets &sets);

}  // namespace corvane
