#include "plan/plan_run.h"

#include <chrono>
#include <ostream>

#include "core/progress.h"
#include "network/network_reader.h"
#include "plan/linear_solver.h"
#include "plan/plan_files.h"
#include "plan/plan_screen.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

class PlanRun {
 public:
  PlanRun(const PlanRequest &request, std::ostream &out, std::ostream &err)
      : request_(request), out_(out), err_(err) {}

  int run() {
    progress_.show([] { return std::string("Reading the import file"); });
    Network network = network::readNetworkFile(request_.importFile);
    lap("read");
    PlanProblem problem = makeProblem(network, request_.problem);
    lap("roles");
    CompactLp lp(problem);
    LinearSolver solver(lp.model());
    lap("model");
    TwoSteps steps(problem, lp, solver, {request_.timeLimit, {}});
    progress_.show([&] {
      return "Solving " + std::to_string(lp.model().rows()) + " rows and " +
             std::to_string(lp.model().columns()) + " columns";
    });
    const LinearSolution solution = steps.solve();
    lap("solve");
    progress_.finish();
    if (solution.status != Status::kOptimal) {
      err_ << "corvane-plan: no plan was found"
           << (solution.status == Status::kStopped ? " within the time given" : "") << ".\n";
      return 1;
    }
    if (!request_.mpsFile.empty() && !solver.writeMps(request_.mpsFile, columnNames(lp), {})) {
      err_ << "corvane-plan: " << request_.mpsFile << " cannot be written.\n";
      return 1;
    }
    SolverRecord record;
    record.rows = lp.model().rows();
    record.columns = lp.model().columns();
    record.nonzeros = lp.model().start.back();
    PlanRecord plan = makeRecord(network, problem, readPlan(problem, lp, solution.primal), record);
    plan.solver.lpUnmet = plan.totals.unmetRolls;
    plan.solver.lpCost = plan.totals.cost.total();
    lap("check");
    return tell(plan);
  }

 private:
  int tell(PlanRecord &plan) {
    if (!plan.faults.empty()) {
      err_ << "corvane-plan: the plan does not hold; this is a fault of the program:\n";
      for (const std::string &fault : plan.faults) {
        err_ << "  " << fault << '\n';
      }
      return 1;
    }
    if (request_.timings) {
      plan.solver.seconds = seconds_;
    }
    if (!request_.quiet) {
      printWarnings(plan, err_);
    }
    if (const std::string file = writePlanFiles(plan, request_.outputFolder); !file.empty()) {
      err_ << "corvane-plan: " << file << " cannot be written.\n";
      return 1;
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
  Clock::time_point last_ = Clock::now();
  std::vector<std::pair<std::string, double>> seconds_;
};

}  // namespace

int runPlan(const PlanRequest &request, std::ostream &out, std::ostream &err) {
  return PlanRun(request, out, err).run();
}

}  // namespace corvane::plan
