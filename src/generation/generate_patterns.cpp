#include "generation/generate_patterns.h"

#include <algorithm>
#include <ctime>
#include <ostream>

#include "core/exchange_sort.h"
#include "generation/column_generation.h"
#include "generation/final_selection.h"
#include "generation/pattern_report.h"

namespace corvane {

namespace {

constexpr std::time_t kSeedsFromClock = 10000;

void seedRandom(qint32 chosenSeed, PatternRandom &random, std::ostream &log) {
  const qint32 seed =
      chosenSeed >= 0 ? chosenSeed : static_cast<qint32>(std::time(nullptr) % kSeedsFromClock);
  log << "Seed                 : " << seed << std::endl;
  random.seed(static_cast<quint32>(seed));
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

void generateAndSelectPatterns(const PlanningData &data, const GenerationSettings &settings,
                               PatternSets &sets, PatternRandom &random, ProgressLine &progress,
                               std::ostream &log) {
  seedRandom(settings.seed, random, log);
  const auto cutters = cuttersByGrade(data);
  const GenerationContext context{settings, data.periods, sets, random, log, progress};
  for (const QString &grade : data.grades) {
    const std::vector<double> deckleWidths = createPatternSets(grade, cutters[grade], sets);
    generateColumns(*data.demand.find(grade), deckleWidths, context);
  }
  selectPatterns(data.grades, data.periods, data.demand, settings, sets, progress, log);
  progress.finish();
  reportPatterns(data.grades, static_cast<int>(data.periods.size()), data.demand, sets,
                 settings.occurMin, log);
}

void generatePatterns(const PlanningData &data, const GenerationSettings &settings,
                      PatternSets &sets, PatternRandom &random, ProgressLine &progress,
                      std::ostream &log) {
  generateAndSelectPatterns(data, settings, sets, random, progress, log);
  prunePatterns(sets);
}

}  // namespace corvane
