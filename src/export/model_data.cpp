#include "export/model_data.h"

#include "core/skip_list_cursor.h"
#include "export/names.h"

namespace corvane {

ModelData::ModelData(const PlanningData &thePlanning, const PatternSets &thePatterns,
                     const ExportSettings &theSettings)
    : planning(thePlanning),
      patterns(thePatterns),
      settings(theSettings),
      cutters_(cuttersByGrade(thePlanning)) {
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

const std::vector<const Cutter *> &ModelData::cuttersOf(const QString &grade) const {
  static const std::vector<const Cutter *> none;
  const auto cutters = cutters_.constFind(grade);
  return cutters != cutters_.constEnd() ? *cutters : none;
}

const std::vector<double> &ModelData::demandWidthsOf(const QString &grade) {
  auto widths = demandWidths_.find(grade);
  if (widths == demandWidths_.end()) {
    const GradeDemand *demand = planning.demand.find(grade);
    widths = demandWidths_.insert(
        grade, demand != nullptr ? distinctWidths(*demand) : std::vector<double>());
  }
  return *widths;
}

void forEachPlannedCutter(const ModelData &data, const std::function<void(const Cutter &)> &visit) {
  forEachElement(data.planning.cutters, [&](const Cutter &cutter) {
    if (data.planning.isPlanned(cutter.grade)) {
      visit(cutter);
    }
  });
}

}  // namespace corvane
