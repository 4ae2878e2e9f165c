#include "plan/linear_solver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "plan/compact_lp.h"
#include "plan/mill_text.h"
#include "plan/planned.h"
#include "plan/two_steps.h"

namespace corvane::plan {

namespace {

constexpr double kSolverTolerance = 1e-7;
constexpr int kNoPivots = 0;

// Two mills short of time: 280 of 500 rolls, of which 80 come by the dearer rate.
class ShortMill : public testing::Test {
 protected:
  static std::string text() {
    TestMill mill = smallMill();
    mill.cutters[0].patterns = {{50, 50}, {60, 30}, {30, 30, 30}};
    mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}, {30, 60}}});
    mill.orders = {{"G", "A", 50.0, 0, 200}, {"G", "A", 30.0, 0, 200}, {"G", "A", 60.0, 0, 100}};
    mill.rates.push_back({"South", "A", "Truck", 25.0, 0.0});
    return importText(mill);
  }

  ShortMill()
      : network_(network::readNetworkText(text())),
        problem_(makeProblem(network_, {})),
        lp_(problem_) {}

  // With unmet rolls at a price.
  LinearModel priced() const {
    LinearModel model = lp_.model();
    for (const int column : lp_.unmetColumns()) {
      model.cost[static_cast<std::size_t>(column)] = 1000.0;
    }
    return model;
  }

  Network network_;
  PlanProblem problem_;
  CompactLp lp_;
};

TEST_F(ShortMill, TheDualSimplexEndsBeforeTheBarrierIsAsked) {
  const LinearSolution solution = LinearSolver(priced()).solveAfresh();
  EXPECT_EQ(solution.status, Status::kOptimal);
  EXPECT_EQ(solution.method, Method::kDual);
}

TEST_F(ShortMill, TheBarrierTakesOverWherePivotsAreUsedUp) {
  const LinearSolution byDual = LinearSolver(priced()).solve(Method::kDual);
  const LinearSolution solution = LinearSolver(priced()).solveAfresh(kNoPivots);
  EXPECT_EQ(solution.status, Status::kOptimal);
  EXPECT_EQ(solution.method, Method::kBarrier);
  EXPECT_NEAR(solution.objective, byDual.objective, kSolverTolerance * byDual.objective);
}

// It goes on from the barrier's vertex, and its limit of pivots is gone.
TEST_F(ShortMill, OtherSolvesGoOnAfterTheBarrier) {
  LinearSolver solver(priced());
  solver.solveAfresh(kNoPivots);
  for (const int column : lp_.unmetColumns()) {
    solver.setCost(column, 1.0);
  }
  LinearModel cheap = lp_.model();
  for (const int column : lp_.unmetColumns()) {
    cheap.cost[static_cast<std::size_t>(column)] = 1.0;
  }
  EXPECT_NEAR(solver.solve(Method::kPrimal).objective,
              LinearSolver(cheap).solve(Method::kDual).objective, kSolverTolerance);
}

// The one sum is not the two steps where a reel costs more than a roll: the plan is the same
// whichever method solved the sum, and that of a sum with another undercost.
TEST_F(ShortMill, BothMethodsEndInTheSamePlan) {
  for (const std::optional<Method> method :
       {std::optional<Method>(), std::optional(Method::kBarrier), std::optional(Method::kPrimal)}) {
    LinearSolver solver(lp_.model());
    TwoSteps steps(problem_, lp_, solver, {0.0, method});
    const LinearSolution solution = steps.solve();
    LinearSolver reference(lp_.model());
    TwoSteps dual(problem_, lp_, reference, {0.0, Method::kDual});
    EXPECT_NEAR(solution.objective, dual.solve().objective, kSolverTolerance * solution.objective);
    EXPECT_NEAR(steps.leastUnmet(), dual.leastUnmet(), kSolverTolerance);
    EXPECT_GT(steps.leastUnmet(), 0.0);
  }
}

TEST_F(ShortMill, APlanThatMakesNothingIsABasisToBeginFrom) {
  LinearSolver solver(priced());
  solver.setBasis(lp_.idleBasis());
  const LinearSolution idle = solver.solve(Method::kPrimal, kNoPivots);
  EXPECT_EQ(idle.status, Status::kStopped);
  EXPECT_NEAR(idle.objective, 500 * 1000.0, kSolverTolerance);
  const double least = LinearSolver(priced()).solve(Method::kDual).objective;
  EXPECT_NEAR(solver.solve(Method::kPrimal).objective, least, kSolverTolerance * least);
}

TEST_F(ShortMill, AsManyAreBasicAsThereAreRows) {
  const Basis basis = lp_.idleBasis();
  const auto count = [](const std::vector<Place> &places) {
    return std::count(places.begin(), places.end(), Place::kBasic);
  };
  EXPECT_EQ(basis.columns.size(), static_cast<std::size_t>(lp_.model().columns()));
  EXPECT_EQ(basis.rows.size(), static_cast<std::size_t>(lp_.model().rows()));
  EXPECT_EQ(count(basis.columns) + count(basis.rows), lp_.model().rows());
}

// The least of y - x, of which each is at most 3: x is at that bound.
TEST(LinearSolver, KnowsWhichColumnsAreAtTheirUpperBounds) {
  LinearModel model;
  const Entry entry{model.addRow(-kInfinite, 10.0), 1.0};
  model.addColumn(-1.0, 0.0, 3.0, {&entry, 1});
  model.addColumn(1.0, 0.0, 3.0, {&entry, 1});
  LinearSolver solver(model);
  solver.solve(Method::kPrimal);
  EXPECT_THAT(solver.basis().columns, testing::ElementsAre(Place::kHigh, Place::kLow));
  EXPECT_THAT(solver.basis().rows, testing::ElementsAre(Place::kBasic));
  LinearSolver other(model);
  other.setBasis(solver.basis());
  const LinearSolution solution = other.solve(Method::kPrimal, kNoPivots);
  EXPECT_NEAR(solution.objective, -3.0, kSolverTolerance);
}

TEST_F(ShortMill, ItsBasisIsThatOfTheLastSolve) {
  LinearSolver solver(priced());
  const LinearSolution solution = solver.solve(Method::kDual);
  LinearSolver other(priced());
  other.setBasis(solver.basis());
  const LinearSolution same = other.solve(Method::kPrimal);
  EXPECT_EQ(same.iterations, 0);
  EXPECT_EQ(same.status, Status::kOptimal);
  EXPECT_NEAR(same.objective, solution.objective, kSolverTolerance * solution.objective);
}

// Columns behind those of the basis are at their lower bounds.
TEST_F(ShortMill, ABasisIsTakenByALargerModel) {
  LinearSolver solver(priced());
  const LinearSolution solution = solver.solve(Method::kDual);
  LinearModel larger = priced();
  larger.addColumn(1.0, 0.0, kInfinite, {});
  LinearSolver other(larger);
  other.setBasis(solver.basis());
  EXPECT_EQ(other.solve(Method::kPrimal).iterations, 0);
}

// Of the first solve of a mill that can make 70 reels of 100 inches.
Method methodFor(int rolls) {
  TestMill mill = smallMill();
  mill.orders = {{"G", "A", 50.0, 0, rolls}};
  const Network network = network::readNetworkText(importText(mill));
  const PlanProblem problem = makeProblem(network, {});
  const CompactLp lp(problem);
  LinearSolver solver(lp.model());
  const LinearSolution solution = solveFirst(problem, lp, solver);
  EXPECT_EQ(solution.status, Status::kOptimal);
  return solution.method;
}

TEST(SolveFirst, BeginsWithNothingWhereMachinesAreFarTooFew) {
  EXPECT_EQ(methodFor(350), Method::kDual);
  EXPECT_EQ(methodFor(351), Method::kPrimal);
}

// A roll in fractions of the solver's tolerance: x + y = 1 with y held just above what is left, as
// a solver may leave it.
TEST(LinearSolver, PolishesWhatItsToleranceLeaves) {
  LinearModel model;
  const int row = model.addRow(1.0, 1.0);
  const Entry entry{row, 1.0};
  const int x = model.addColumn(1.0, 0.0, kInfinite, {&entry, 1});
  const int y = model.addColumn(2.0, 0.0, kInfinite, {&entry, 1});
  LinearSolver solver(model);
  solver.solve(Method::kDual);
  // Within the tolerance of 1e-7 x is 1 and y is 5e-8: solved without a pivot.
  solver.setRowBounds(row, 1.0, 1.0);
  solver.setColumnBounds(x, 0.0, 1.0 - 5e-8);
  const LinearSolution loose = solver.solve(Method::kPrimal);
  EXPECT_GT(loose.primal[static_cast<std::size_t>(x)], 1.0 - 1e-8);
  const LinearSolution polished = solver.polish(loose);
  ASSERT_EQ(polished.status, Status::kOptimal);
  EXPECT_LE(polished.primal[static_cast<std::size_t>(x)], 1.0 - 4.9e-8);
  EXPECT_NEAR(
      polished.primal[static_cast<std::size_t>(x)] + polished.primal[static_cast<std::size_t>(y)],
      1.0, 1e-12);
}

}  // namespace

}  // namespace corvane::plan
