#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "generation/pattern_set.h"
#include "planning/planning_data.h"

namespace corvane {

// What the export reads of the run parameters.
struct ExportSettings {
  bool batch = false;
  bool delay = true;
  bool patternsOnly = false;
  qint32 daysPerPeriod = 7;
};

// The row numbers of the drawing, each counted through the whole run.
struct ModelRows {
  quint32 batch = 0;
  quint32 storage = 0;
  quint32 block = 0;
  quint32 delay = 0;
};

// What the writers read, with the look-ups that they share, and the rows that they count.
struct ModelData {
  ModelData(const PlanningData &thePlanning, const PatternSets &thePatterns,
            const ExportSettings &theSettings);
  ModelData(const ModelData &) = delete;
  ModelData &operator=(const ModelData &) = delete;
  ~ModelData() = default;

  // The first pattern set of the cutter's grade and width (exact equality), or null.
  const PatternCompPattern *patternSetOf(const Cutter &cutter) const;
  // The cutters of a grade, in list order.
  const std::vector<const Cutter *> &cuttersOf(const QString &grade) const;
  // The distinct demand widths of a grade in all periods, widest first.
  const std::vector<double> &demandWidthsOf(const QString &grade);

  // How far batch nodes, and delay nodes, push the columns behind them to the right.
  int batchShift() const { return settings.batch ? kColumnShift : 0; }
  int delayShift() const { return settings.delay ? kColumnShift : 0; }

  static constexpr int kColumnShift = 290;

  const PlanningData &planning;
  const PatternSets &patterns;
  const ExportSettings settings;
  // The period names, with their quotes, in UTF-8.
  std::vector<std::string> periods;
  ModelRows rows;
  // Demanded inches: quantity times width of every order written.
  double totalDemand = 0;

 private:
  QHash<QString, std::vector<const Cutter *>> cutters_;
  QHash<QString, std::vector<double>> demandWidths_;
};

// Calls visit(cutter) for every cutter of a planned grade, in list order.
void forEachPlannedCutter(const ModelData &data, const std::function<void(const Cutter &)> &visit);

}  // namespace corvane
