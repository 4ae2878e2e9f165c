#include "export/model_data.h"

#include "core/skip_list_cursor.h"
#include "export/names.h"

namespace corvane {

ModelData::ModelData(const PlanningData &thePlanning, const PatternSets &thePatterns,
                     const ExportSettings &theSettings)
    : planning(thePlanning), patterns(thePatterns), settings(theSettings), columns(theSettings) {
  for (const QString &period : planning.periods) {
    periods.push_back(quoted(period));
  }
}

const PatternCompPattern *ModelData::patternSetOf(const Cutter &cutter) const {
  for (const PatternCompPattern *set : patterns.ofGrade(cutter.grade)) {
    if (set->deckleWidth == cutter.width) {
      return set;
    }
  }
  return nullptr;
}

void forEachPlannedCutter(const ModelData &data, const std::function<void(const Cutter &)> &visit) {
  forEachElement(data.planning.cutters, [&](const Cutter &cutter) {
    if (data.planning.isPlanned(cutter.grade)) {
      visit(cutter);
    }
  });
}

}  // namespace corvane
