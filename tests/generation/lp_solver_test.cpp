#include "generation/lp_solver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "scripted_lp.h"
#include "support/fatal_end.h"
#include "support/heap_probe.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::expectRunEnds;
using testing::ElementsAre;

const std::vector<double> kRowWidths = {30, 20};

class TheLpSolver : public testing::Test {
 protected:
  void SetUp() override {
    scripted_lp::reset();
    // Two widths of demand 4 and 6, each with a column of cost 80.
    lp_.columns.append(80, {30}, kRowWidths);
    lp_.columns.append(80, {20}, kRowWidths);
    lp_.rightHandSides = {4, 6};
  }

  // The steps of a run on a solver of its own, up to and with the solve.
  void solve(LpSolver &solver) {
    solver.open();
    solver.create(lp_);
    solver.solve("Fine", "Week 2");
  }

  void expectFatal(const std::string &script, const std::function<void(LpSolver &)> &step,
                   const std::string &words) {
    scripted_lp::set_script(script);
    const auto run = [&](std::ostream &log) {
      LpSolver solver(false, log);
      step(solver);
    };
    expectRunEnds(run, words);
  }

  std::ostringstream log_;
  LpProblem lp_{2, 2, 2, log_};
};

TEST_F(TheLpSolver, HandsTheWholeLpToTheLibraryAndNoRanges) {
  LpSolver solver(false, log_);
  solver.open();
  solver.create(lp_);
  EXPECT_THAT(
      scripted_lp::calls(),
      ElementsAre("CPXopenCPLEXruntime(status=set, serial=0, licence=null) -> env1 status=0",
                  "CPXcreateprob(env=env1, status=set, name=selectPatterns) -> lp1 status=0",
                  "CPXcopylp(env=env1, lp=lp1, columns=2, rows=2, objective_sense=1, "
                  "objective=[80 80], rhs=[4 6], senses=[G G], matbeg=[0 1], matcnt=[1 1], "
                  "matind=[0 1], matval=[1 1], lower=[0 0], upper=[1e+20 1e+20], ranges=null) "
                  "-> 0"));
}

TEST_F(TheLpSolver, RunsThePrimalSimplexByDefault) {
  LpSolver solver(false, log_);
  solve(solver);
  EXPECT_THAT(scripted_lp::calls_of("primopt"), ElementsAre("CPXprimopt(env=env1, lp=lp1) -> 0"));
  EXPECT_THAT(scripted_lp::calls_of("hybbaropt"), testing::IsEmpty());
  EXPECT_THAT(scripted_lp::calls_of("getstat"), ElementsAre("CPXgetstat(env=env1, lp=lp1) -> 1"));
}

TEST_F(TheLpSolver, RunsTheBarrierMethodWithAPrimalCrossoverWhereChosen) {
  LpSolver solver(true, log_);
  solve(solver);
  EXPECT_THAT(scripted_lp::calls_of("hybbaropt"),
              ElementsAre("CPXhybbaropt(env=env1, lp=lp1, method=112) -> 0"));
  EXPECT_THAT(scripted_lp::calls_of("primopt"), testing::IsEmpty());
}

TEST_F(TheLpSolver, ReadsTheDualsOfAllRows) {
  LpSolver solver(false, log_);
  solve(solver);
  EXPECT_THAT(solver.readDuals(), ElementsAre(80, 80));
  EXPECT_THAT(
      scripted_lp::calls_of("getpi"),
      ElementsAre("CPXgetpi(env=env1, lp=lp1, values=set, begin=0, end=1) -> 0 values=[80 80]"));
}

TEST_F(TheLpSolver, ReadsObjectiveValuesAndReducedCostsInThatOrder) {
  LpSolver solver(false, log_);
  solve(solver);
  const std::size_t before = scripted_lp::calls().size();
  const LpSolution solution = solver.readSolution();
  EXPECT_EQ(solution.objectiveValue, 800);
  EXPECT_THAT(solution.xValues, ElementsAre(4, 6));
  EXPECT_THAT(solution.reducedCosts, ElementsAre(0, 0));
  const std::vector<std::string> &calls = scripted_lp::calls();
  EXPECT_THAT(
      std::vector<std::string>(calls.begin() + static_cast<std::ptrdiff_t>(before), calls.end()),
      ElementsAre("CPXgetobjval(env=env1, lp=lp1, value=set) -> 0 value=[800]",
                  "CPXgetx(env=env1, lp=lp1, values=set, begin=0, end=1) -> 0 values=[4 6]",
                  "CPXgetdj(env=env1, lp=lp1, values=set, begin=0, end=1) -> 0 values=[0 0]"));
}

TEST_F(TheLpSolver, AddsColumnsInOneBatchAndReadsTheirValuesToo) {
  LpSolver solver(false, log_);
  solve(solver);
  LpColumns columns(LpColumns::kAdditional, log_);
  columns.append(100, {30, 30, 20, 20}, kRowWidths);
  solver.addColumns(columns);
  EXPECT_THAT(scripted_lp::calls_of("addcols"),
              ElementsAre("CPXaddcols(env=env1, lp=lp1, columns=1, nonzeros=2, objective=[100], "
                          "matbeg=[0], matind=[0 1], matval=[2 2], lower=[0], upper=[1e+20], "
                          "names=null) -> 0"));
  solver.solve("Fine", "Week 2");
  const LpSolution solution = solver.readSolution();
  EXPECT_EQ(solution.objectiveValue, 300);
  EXPECT_THAT(solution.xValues, testing::SizeIs(3));
}

TEST_F(TheLpSolver, FreesTheProblemAndClosesTheEnvironment) {
  LpSolver solver(false, log_);
  solve(solver);
  solver.freeProblem();
  solver.close();
  EXPECT_THAT(scripted_lp::calls_of("freeprob"), ElementsAre("CPXfreeprob(env=env1, lp=lp1) -> 0"));
  EXPECT_THAT(scripted_lp::calls_of("close"), ElementsAre("CPXcloseCPLEX(env=env1) -> 0"));
  EXPECT_EQ(log_.str(), "");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheEnvironmentDoesNotOpen) {
  const auto open = [](LpSolver &solver) { solver.open(); };
  expectFatal("open:1=32201", open, "Error: Could not open cplex.");
  expectFatal("open:1=null", open, "Error: Could not open cplex.");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheEnvironmentDoesNotClose) {
  const auto close = [](LpSolver &solver) {
    solver.open();
    solver.close();
  };
  expectFatal("close:1=1", close, "Error: Could not close cplex.");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheProblemIsNotCreated) {
  const auto create = [this](LpSolver &solver) {
    solver.open();
    solver.create(lp_);
  };
  expectFatal("createprob:1=null", create, "Error: Could not create LP.");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheSolveFailsAndTellsCodeGradePeriodAndStatus) {
  expectFatal(
      "primopt:1=3003;getstat:1=7", [this](LpSolver &solver) { solve(solver); },
      "Error: No solution to lp, status : 3003\n"
      "Grade : Fine\n"
      "Period : Week 2\n"
      "Error: Solution not optimal, status : 7");
}

TEST_F(TheLpSolver, TellsTheStatusAfterAFailedSolveEvenIfItIsOptimal) {
  expectFatal(
      "primopt:1=-5;getstat:1=1", [this](LpSolver &solver) { solve(solver); },
      "Error: No solution to lp, status : -5\n"
      "Grade : Fine\n"
      "Period : Week 2\n"
      "Error: Solution not optimal, status : 1");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheBarrierMethodFails) {
  scripted_lp::set_script("hybbaropt:1=1001;getstat:1=6");
  const auto run = [this](std::ostream &log) {
    LpSolver solver(true, log);
    solve(solver);
  };
  expectRunEnds(run,
                "Error: No solution to lp, status : 1001\n"
                "Grade : Fine\n"
                "Period : Week 2\n"
                "Error: Solution not optimal, status : 6");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheSolutionIsNotOptimal) {
  for (const char *status : {"0", "2", "3", "5", "6", "101"}) {
    expectFatal(
        std::string("getstat:1=") + status, [this](LpSolver &solver) { solve(solver); },
        "Error: Solution not optimal.");
  }
}

TEST_F(TheLpSolver, EndsTheRunWhenTheDualsCannotBeRead) {
  const auto readDuals = [this](LpSolver &solver) {
    solve(solver);
    solver.readDuals();
  };
  expectFatal("getpi:1=1217", readDuals, "Error: Could not get dual values from LP : 1217");
}

TEST_F(TheLpSolver, EndsTheRunWithoutMemoryForTheDuals) {
  const auto readDuals = [this](LpSolver &solver) {
    solve(solver);
    support::HeapProbe heap;
    heap.failRequest(1);
    solver.readDuals();
  };
  expectFatal("", readDuals, "Error: Could not allocate memory for dual values.");
}

// So many columns that the library asks for no block of their size.
TEST_F(TheLpSolver, EndsTheRunWithoutMemoryForTheSolution) {
  constexpr int kColumns = 1000;
  while (lp_.columns.count() < kColumns) {
    lp_.columns.append(80, {20}, kRowWidths);
  }
  const auto readSolution = [this](int n) {
    return [this, n](LpSolver &solver) {
      solve(solver);
      support::HeapProbe heap;
      heap.failRequestOf(kColumns * sizeof(double), n);
      solver.readSolution();
    };
  };
  const char *script = "getobjval:1=0;getx:1=5;getdj:1=5";
  expectFatal(script, readSolution(1), "Error: Could not allocate memory for x values.");
  expectFatal(script, readSolution(2), "Error: Could not allocate memory for reduced costs.");
}

TEST_F(TheLpSolver, EndsTheRunWhenColumnsAreNotAdded) {
  const auto addColumns = [this](LpSolver &solver) {
    solve(solver);
    solver.addColumns(lp_.columns);
  };
  expectFatal("addcols:1=1", addColumns, "Error: Could not add columns to LP.");
}

TEST_F(TheLpSolver, EndsTheRunWhenTheProblemIsNotFreed) {
  const auto free = [this](LpSolver &solver) {
    solve(solver);
    solver.freeProblem();
  };
  expectFatal("freeprob:1=1", free, "Error: LP did not unload successfully.");
}

TEST_F(TheLpSolver, DoesNotLookAtTheAnswerOfALoad) {
  scripted_lp::set_script("copylp:1=1001");
  LpSolver solver(false, log_);
  solver.open();
  solver.create(lp_);
  solver.close();
  EXPECT_EQ(log_.str(), "");
}

TEST_F(TheLpSolver, DoesNotLookAtFailedReadsOfASolutionWhoseArraysAreZeroThen) {
  scripted_lp::set_script("getobjval:1=5;getx:1=5;getdj:1=5");
  LpSolver solver(false, log_);
  solve(solver);
  const LpSolution solution = solver.readSolution();
  EXPECT_THAT(solution.xValues, ElementsAre(0, 0));
  EXPECT_THAT(solution.reducedCosts, ElementsAre(0, 0));
  EXPECT_EQ(log_.str(), "");
}

}  // namespace
}  // namespace corvane
