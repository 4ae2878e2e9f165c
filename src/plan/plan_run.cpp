#include "plan/plan_run.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ostream>

#include "core/progress.h"
#include "network/network_reader.h"
#include "plan/advice.h"
#include "plan/improve_step.h"
#include "plan/linear_solver.h"
#include "plan/pattern_pool.h"
#include "plan/plan_files.h"
#include "plan/plan_screen.h"
#include "plan/two_steps.h"
#include "plan/whole_step.h"

namespace corvane::plan {

namespace {

constexpr int kNoPlan = 1;
// Whole reels may be bettered for hours; unless told otherwise a planner waits for so long.
constexpr double kWholeReelSeconds = 60;

class PlanRun {
 public:
  PlanRun(const PlanRequest &request, std::ostream &out, std::ostream &err)
      : request_(request), out_(out), err_(err) {}

  int run() {
    read();
    addPools();
    improve();
    return plan();
  }

 private:
  void read() {
    progress_.show([] { return std::string("Reading the import file"); });
    network_ = network::readNetworkFile(request_.importFile);
    lap("read");
    problem_ = makeProblem(network_, request_.problem);
    lap("roles");
  }

  void addPools() {
    for (const std::string &file : request_.poolFiles) {
      progress_.show([&] { return "Reading " + file; });
      const PoolReport report = addPoolFile(file);
      pooled_ += report.added;
      if (report.foreign > 0) {
        problem_.warnings.push_back(
            {0, "pool-foreign",
             std::to_string(report.foreign) + " patterns of " + file +
                 " are of a cutter or width that this run does not have and are left out"});
      }
    }
    lap("pool");
  }

  // What is wrong with one file of several names it.
  PoolReport addPoolFile(const std::string &file) {
    try {
      const Network other = network::readNetworkFile(file);
      return addPool(network_, problem_, other, makeProblem(other, request_.problem));
    } catch (const network::Refused &refused) {
      throw network::Refused(refused.line(), std::string(refused.what()) + " (in " + file + ")");
    }
  }

  void improve() {
    if (request_.improve) {
      improved_.emplace(request_.mill, network_, problem_);
      improved_->run(request_.timeLimit, request_.clock, progress_);
      lap("improve");
    }
  }

  int plan() {
    const std::optional<CompactLp> made =
        improved_ ? std::nullopt : std::optional(CompactLp(problem_));
    const CompactLp &lp = improved_ ? improved_->lp() : *made;
    LinearSolver solver(lp.model());
    lap("model");
    progress_.show([&] {
      return "Solving " + std::to_string(lp.model().rows()) + " rows and " +
             std::to_string(lp.model().columns()) + " columns";
    });
    TwoSteps steps(problem_, lp, solver,
                   {request_.timeLimit, {}, improved_ ? &improved_->basis() : nullptr});
    LinearSolution solution = steps.solve();
    lap("solve");
    progress_.finish();
    if (solution.status != Status::kOptimal) {
      err_ << "corvane-plan: no plan was found"
           << (solution.status == Status::kStopped ? " within the time given" : "") << ".\n";
      return kNoPlan;
    }
    const std::vector<int> whole = isWhole() ? ReelSpace(problem_, lp).reels() : std::vector<int>();
    if (!request_.mpsFile.empty() && !solver.writeMps(request_.mpsFile, columnNames(lp), whole)) {
      return cannotWrite(request_.mpsFile);
    }
    SolverRecord solved = recordOf(lp);
    const Plan linear = readPlan(problem_, lp, solution.primal);
    const Totals bound = sumUp(network_, problem_, linear);
    solved.lpUnmet = bound.unmetRolls;
    solved.lpCost = bound.cost.total();
    Told told = advise({network_, problem_, lp, solution, steps.unmetDual(), bound});
    if (isWhole() && !makeWhole(lp, solution, solved)) {
      err_ << "corvane-plan: no plan of whole reels was found within the time given.\n";
      return kNoPlan;
    }
    PlanRecord record =
        makeRecord(network_, problem_, readPlan(problem_, lp, solution.primal), solved);
    if (solved.wholeReels && solved.lpCost > 0.0) {
      record.solver.gapToLp = record.totals.cost.total() / solved.lpCost - 1.0;
    }
    record.advice = std::move(told.advice);
    if (told.delays) {
      record.warnings.insert(record.warnings.begin(), *told.delays);
    }
    lap("check");
    const int status = tell(record);
    return status == 0 ? tellImproved(linear, record.plan) : status;
  }

  struct Told {
    std::vector<Advice> advice;
    std::optional<network::Warning> delays;
  };

  // Only days come for nothing; nobody waits for the rest who does not read it.
  Told advise(const LinearOptimum &optimum) {
    Told told{adviseDays(optimum), {}};
    std::optional<WhatIfs> whatIfs;
    if (!request_.quiet && optimum.lp.model().rows() <= request_.mostAdviceRows) {
      progress_.show([] { return std::string("Looking for what else would pay"); });
      whatIfs = solveWhatIfs(optimum, request_.timeLimit);
      for (const std::vector<Advice> &more :
           {adviseWhatIfs(optimum, *whatIfs),
            request_.improve ? std::vector<Advice>()
                             : advisePatterns(optimum, rollsInPattern(request_.mill, problem_))}) {
        told.advice.insert(told.advice.end(), more.begin(), more.end());
      }
      progress_.finish();
    }
    told.delays = warnOfDelays(optimum, whatIfs);
    lap("advice");
    return told;
  }

  // A file with batches asks for whole reels.
  bool isWhole() const { return request_.wholeReels || network_.batch; }

  bool makeWhole(const CompactLp &lp, LinearSolution &solution, SolverRecord &record) {
    const double seconds = request_.timeLimit > 0.0 ? request_.timeLimit : kWholeReelSeconds;
    const std::optional<WholeStepResult> whole =
        planWhole(problem_, lp, solution, {seconds, request_.gap}, progress_);
    progress_.finish();
    lap("whole_reels");
    if (!whole || whole->solution.status != Status::kOptimal) {
      return false;
    }
    solution = whole->solution;
    record.wholeReels = true;
    record.way = whole->way;
    return true;
  }

  // The improved model needs the patterns of both the linear plan and the one that is told.
  int tellImproved(const Plan &linear, const Plan &plan) {
    if (!improved_) {
      return 0;
    }
    const std::string file = request_.outputFolder + "/CV-improved.imp";
    if (request_.mill) {
      std::vector<double> reels = linear.reels;
      std::transform(reels.begin(), reels.end(), plan.reels.begin(), reels.begin(),
                     [](double a, double b) { return std::max(a, b); });
      if (!improved_->writeModel(reels, file)) {
        return cannotWrite(file);
      }
    }
    if (!request_.quiet) {
      out_ << "  Improved   " << improved_->summary() << "\n             "
           << (request_.mill ? "the model with these patterns is in " + file
                             : "no improved model: it is made of the input files of a folder")
           << '\n';
    }
    return 0;
  }

  SolverRecord recordOf(const CompactLp &lp) const {
    SolverRecord record;
    record.rows = lp.model().rows();
    record.columns = lp.model().columns();
    record.nonzeros = lp.model().start.back();
    if (!request_.poolFiles.empty()) {
      record.figures.emplace_back("pooled_patterns", pooled_);
    }
    if (improved_) {
      const ImproveReport &report = improved_->report();
      record.figures.emplace_back("improve_rolls_in_pattern", improved_->limit());
      record.figures.emplace_back("improve_rounds", report.rounds);
      record.figures.emplace_back("improve_patterns", report.patterns);
      record.figures.emplace_back("improve_complete", report.isComplete ? 1 : 0);
      record.figures.emplace_back("improve_first_cost", report.firstCost);
      record.figures.emplace_back("improve_cost", report.cost);
      record.figures.emplace_back("improve_cost_bound", report.costBound);
      record.figures.emplace_back("improve_first_unmet", report.firstUnmet);
      record.figures.emplace_back("improve_unmet", report.unmet);
      record.figures.emplace_back("improve_unmet_bound", report.unmetBound);
    }
    return record;
  }

  int cannotWrite(const std::string &file) {
    err_ << "corvane-plan: " << file << " cannot be written.\n";
    return kNoPlan;
  }

  int tell(PlanRecord &plan) {
    if (!plan.faults.empty()) {
      err_ << "corvane-plan: the plan does not hold; this is a fault of the program:\n";
      for (const std::string &fault : plan.faults) {
        err_ << "  " << fault << '\n';
      }
      return kNoPlan;
    }
    if (request_.timings) {
      plan.solver.seconds = seconds_;
    }
    if (!request_.quiet) {
      printWarnings(plan, err_);
    }
    if (const std::string file = writePlanFiles(plan, request_.outputFolder); !file.empty()) {
      return cannotWrite(file);
    }
    if (!request_.quiet) {
      printPlan(plan, request_.importFile, out_);
      out_ << "  Written to " << request_.outputFolder << '\n';
    }
    return 0;
  }

  void lap(const char *step) {
    const Clock::time_point now = Clock::now();
    seconds_.emplace_back(step, std::chrono::duration<double>(now - last_).count());
    last_ = now;
  }

  using Clock = std::chrono::steady_clock;

  const PlanRequest &request_;
  std::ostream &out_;
  std::ostream &err_;
  ProgressLine progress_;
  Network network_;
  PlanProblem problem_;
  int pooled_ = 0;
  std::optional<ImproveStep> improved_;
  Clock::time_point last_ = Clock::now();
  std::vector<std::pair<std::string, double>> seconds_;
};

}  // namespace

int runPlan(const PlanRequest &request, std::ostream &out, std::ostream &err) {
  return PlanRun(request, out, err).run();
}

}  // namespace corvane::plan
