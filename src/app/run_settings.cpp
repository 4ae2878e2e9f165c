#include "app/run_settings.h"

namespace corvane {

GenerationSettings generationSettings(const RunParameters &parameters) {
  GenerationSettings settings;
  settings.maximumWidthsInPattern = parameters.maximumWidthsInPattern;
  settings.widthPickSetSize = parameters.widthPickSetSize;
  settings.stopGeneratingThreshold = parameters.stopGeneratingThreshold;
  settings.newPatternsPerIteration = parameters.newPatternsPerIteration;
  settings.timeLimit = parameters.timeLimit;
  settings.seed = parameters.seed;
  settings.occurMin = parameters.occurMin;
  settings.barrier = parameters.solver == QLatin1String("Barrier");
  return settings;
}

ExportSettings exportSettings(const RunParameters &parameters) {
  ExportSettings settings;
  settings.batch = parameters.batch != 0;
  settings.delay = parameters.delay != 0;
  settings.patternsOnly = parameters.patternsOnly == 1;
  settings.daysPerPeriod = parameters.daysPerPeriod;
  return settings;
}

}  // namespace corvane
