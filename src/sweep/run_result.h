#pragma once

#include <QString>
#include <map>
#include <optional>

namespace corvane::sweep {

// What became of one run.
struct RunResult {
  int plannerStatus = -1;  // exit statuses; -1 where the program was not started
  int planStatus = -1;
  double seconds = 0;  // from the start to the end of both
  QString message;     // the last line that the failing program said
  // The plan's totals, nested names joined with "_": "cost_total", "unmet_rolls". And "patterns",
  // the number of patterns in the model.
  std::map<QString, double> figures;

  bool isDone() const { return plannerStatus == 0 && planStatus == 0; }
  // The figure, or 0.
  double figure(const QString &name) const;
};

// The result of the run in the folder; nothing while it has none, since it has not ended by itself.
std::optional<RunResult> readResult(const QString &runFolder);

// Writes it, whole or not at all; false when it cannot.
bool writeResult(const QString &runFolder, const RunResult &result);

// The totals of a plan record, read from the folder that corvane-plan writes to; empty when it
// cannot be read.
std::map<QString, double> readPlanTotals(const QString &planFolder);

}  // namespace corvane::sweep
