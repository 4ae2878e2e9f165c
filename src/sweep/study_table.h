#pragma once

#include <QString>
#include <iosfwd>
#include <optional>
#include <vector>

#include "sweep/run_result.h"
#include "sweep/run_settings.h"

namespace corvane::sweep {

// A run of a study with its result, where it has one.
struct StudyRow {
  RunSettings run;
  std::optional<RunResult> result;

  bool isDone() const { return result && result->isDone(); }
};

// A plan with the patterns of all runs of the same data offered together.
struct PooledPlan {
  QString dataId;
  std::size_t runs = 0;
  double bestCost = 0;  // of a single run of them
  double bestUnmet = 0;
  bool isDone = false;
  std::map<QString, double> figures;  // the plan's totals
};

// Best first: done before failed before missing; then the least unmet rolls, the least cost, and
// the order of the study.
void sortBestFirst(std::vector<StudyRow> &rows);

// One row a run: its id, what varies, its state ("done", "failed", "missing"), the plan's cost by
// kind, trim and unmet rolls, the patterns in the model, seconds, exit statuses and message.
void writeStudyCsv(const Study &study, const std::vector<StudyRow> &rows, std::ostream &out);

// The same and the pooled plans as JSON, schema corvane-study/1.
void writeStudyJson(const Study &study, const std::vector<StudyRow> &rows,
                    const std::vector<PooledPlan> &pooled, std::ostream &out);

}  // namespace corvane::sweep
