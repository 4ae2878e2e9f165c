#include "generation/generate_patterns.h"

#include <algorithm>
#include <ctime>
#include <iostream>

#include "core/exchange_sort.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "generation/column_generation.h"
#include "generation/final_lp.h"
#include "generation/pattern_choice.h"

namespace corvane {

namespace {

constexpr std::time_t kSeedsFromClock = 10000;

void seedRandom(qint32 chosenSeed, PatternRandom &random, std::ostream &log) {
  const qint32 seed =
      chosenSeed >= 0 ? chosenSeed : static_cast<qint32>(std::time(nullptr) % kSeedsFromClock);
  log << "Seed                 : " << seed << std::endl;
  random.seed(static_cast<quint32>(seed));
}

void report(double deckleWidth, const RareWidth &rare, std::ostream &log) {
  tell(std::cout, log,
       "Deckle Width: " + fixed(deckleWidth, 3) + ", Demand Width: " + fixed(rare.width, 3) +
           " is in " + std::to_string(rare.patterns) + " patterns.");
}

}  // namespace

std::vector<double> createPatternSets(const QString &grade,
                                      const std::vector<const Cutter *> &cutters,
                                      PatternSets &sets) {
  std::vector<double> deckleWidths;
  for (const Cutter *cutter : cutters) {
    if (std::find(deckleWidths.begin(), deckleWidths.end(), cutter->width) == deckleWidths.end()) {
      deckleWidths.push_back(cutter->width);
      sets.add(grade, cutter->width);
    }
  }
  exchangeSort(deckleWidths, [](double a, double b) { return a > b; });
  return deckleWidths;
}

void generateAllColumns(const GenerationContext &context) {
  const PlanningData &data = context.data;
  seedRandom(context.settings.seed, context.random, context.log);
  for (const QString &grade : data.grades) {
    const std::vector<double> deckleWidths =
        createPatternSets(grade, data.cuttersOf(grade), context.sets);
    generateColumns(*data.demand.find(grade), deckleWidths, context);
  }
}

void chooseAndReportPatterns(const GenerationContext &context) {
  const auto periodCount = static_cast<qint32>(context.data.periods.size());
  for (const QString &grade : context.data.grades) {
    const std::vector<double> &widths = context.data.demandWidthsOf(grade);
    for (const PatternCompPattern *set : context.sets.ofGrade(grade)) {
      for (const RareWidth &rare :
           choosePatterns(*set, widths, periodCount, context.settings.occurMin)) {
        report(set->deckleWidth, rare, context.log);
      }
    }
  }
}

void generatePatterns(const GenerationContext &context) {
  generateAllColumns(context);
  solveFinalLps(context);
  context.progress.finish();
  chooseAndReportPatterns(context);
  prunePatterns(context.sets);
}

}  // namespace corvane
