#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/run_parameters.h"
#include "core/progress.h"
#include "plan/pattern_improver.h"

namespace corvane::plan {

// How many rolls a pattern may hold: as the parameters of the run that wrote the network say, where
// they are known, else as many as the largest of the problem.
int rollsInPattern(const std::optional<RunParameters> &mill, const PlanProblem &problem);

// The part of a run that improves the patterns and writes the improved model.
class ImproveStep {
 public:
  // `mill` are the parameters of the run that wrote the network, where they are known: they
  // name the inputs, whose widths have more digits than the file's.
  ImproveStep(const std::optional<RunParameters> &mill, Network &network, PlanProblem &problem);

  // Adds patterns to the network and the problem. REQUIRED before what follows.
  void run(double seconds, const std::function<double()> &clock, ProgressLine &progress);

  int limit() const { return limit_; }
  const ImproveReport &report() const { return improvement_->report; }
  // The LP of the improved problem, and a basis for it.
  const CompactLp &lp() const { return improvement_->lp; }
  const Basis &basis() const { return improvement_->basis; }
  // One line for a planner: from what to what, and what holds of all other patterns.
  std::string summary() const;

  // Writes the import file of the mill with the patterns of the file and those of the others that
  // the plan uses (reels by pattern and period, period by period). REQUIRES the parameters. False
  // when it cannot be written.
  bool writeModel(const std::vector<double> &reels, const std::string &file) const;

 private:
  const std::optional<RunParameters> &mill_;
  Network &network_;
  PlanProblem &problem_;
  int limit_;
  std::optional<Improvement> improvement_;
};

}  // namespace corvane::plan
