#include "plan/plan_run.h"

#include <chrono>
#include <ostream>

#include "core/progress.h"
#include "network/network_reader.h"
#include "plan/linear_solver.h"
#include "plan/pattern_pool.h"
#include "plan/plan_files.h"
#include "plan/plan_screen.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

constexpr int kNoPlan = 1;

class PlanRun {
 public:
  PlanRun(const PlanRequest &request, std::ostream &out, std::ostream &err)
      : request_(request), out_(out), err_(err) {}

  int run() {
    read();
    addPools();
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
      const Network other = network::readNetworkFile(file);
      const PoolReport report =
          addPool(network_, problem_, other, makeProblem(other, request_.problem));
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

  int plan() {
    const CompactLp lp(problem_);
    LinearSolver solver(lp.model());
    lap("model");
    progress_.show([&] {
      return "Solving " + std::to_string(lp.model().rows()) + " rows and " +
             std::to_string(lp.model().columns()) + " columns";
    });
    const LinearSolution solution =
        TwoSteps(problem_, lp, solver, {request_.timeLimit, {}}).solve();
    lap("solve");
    progress_.finish();
    if (solution.status != Status::kOptimal) {
      err_ << "corvane-plan: no plan was found"
           << (solution.status == Status::kStopped ? " within the time given" : "") << ".\n";
      return kNoPlan;
    }
    if (!request_.mpsFile.empty() && !solver.writeMps(request_.mpsFile, columnNames(lp), {})) {
      return cannotWrite(request_.mpsFile);
    }
    PlanRecord record =
        makeRecord(network_, problem_, readPlan(problem_, lp, solution.primal), recordOf(lp));
    record.solver.lpUnmet = record.totals.unmetRolls;
    record.solver.lpCost = record.totals.cost.total();
    lap("check");
    return tell(record);
  }

  SolverRecord recordOf(const CompactLp &lp) const {
    SolverRecord record;
    record.rows = lp.model().rows();
    record.columns = lp.model().columns();
    record.nonzeros = lp.model().start.back();
    if (!request_.poolFiles.empty()) {
      record.figures.emplace_back("pooled_patterns", pooled_);
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
  Clock::time_point last_ = Clock::now();
  std::vector<std::pair<std::string, double>> seconds_;
};

}  // namespace

int runPlan(const PlanRequest &request, std::ostream &out, std::ostream &err) {
  return PlanRun(request, out, err).run();
}

}  // namespace corvane::plan
