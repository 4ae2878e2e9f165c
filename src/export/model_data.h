#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "export/drawing.h"
#include "generation/pattern_set.h"
#include "planning/planning_data.h"

namespace corvane {

// What the export reads of the run parameters.
struct ExportSettings {
  bool batch = false;
  bool delay = true;
  bool patternsOnly = false;
  qint32 daysPerPeriod = 7;

  bool hasBatchNodes() const { return batch && !patternsOnly; }
};

// What the writers read.
struct ModelData {
  // The planning data and the patterns outlive this.
  ModelData(const PlanningData &thePlanning, const PatternSets &thePatterns,
            const ExportSettings &theSettings);
  ModelData(const ModelData &) = delete;
  ModelData &operator=(const ModelData &) = delete;
  ~ModelData() = default;

  // The first pattern set of the cutter's grade and width (exact equality), or null.
  const PatternCompPattern *patternSetOf(const Cutter &cutter) const;

  const PlanningData &planning;
  const PatternSets &patterns;
  const ExportSettings settings;
  const DrawingColumns columns;
  // The period names, with their quotes, in UTF-8.
  std::vector<std::string> periods;
};

// Calls visit(cutter) for every cutter of a planned grade, in list order.
void forEachPlannedCutter(const ModelData &data, const std::function<void(const Cutter &)> &visit);

}  // namespace corvane
