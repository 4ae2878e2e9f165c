#pragma once

#include <iosfwd>

#include "core/progress.h"
#include "generation/generation_settings.h"
#include "generation/pattern_random.h"
#include "generation/pattern_set.h"
#include "planning/planning_data.h"

namespace corvane {

// The whole of pattern generation: seeds the generator, creates the pattern sets, generates columns
// grade by grade, selects, reports and prunes. Afterwards the sets hold the patterns of the model.
// REQUIRES the planning data; faults end the run.
void generatePatterns(const PlanningData &data, const GenerationSettings &settings,
                      PatternSets &sets, PatternRandom &random, ProgressLine &progress,
                      std::ostream &log);

// Everything up to the pattern report, and no pruning: patterns that enter the model in no period
// are still there.
void generateAndSelectPatterns(const PlanningData &data, const GenerationSettings &settings,
                               PatternSets &sets, PatternRandom &random, ProgressLine &progress,
                               std::ostream &log);

// The grade's distinct deckle widths, ascending, and an empty pattern set for each, created in the
// order of the cutters. cutters are those of the grade, in list order.
std::vector<double> createPatternSets(const QString &grade,
                                      const std::vector<const Cutter *> &cutters,
                                      PatternSets &sets);

}  // namespace corvane
