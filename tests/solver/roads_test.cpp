// Programs of ten rows on every road of the layer: the thresholds are handed in.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "solver/plain_solver.h"
#include "solver/program_of.h"
#include "solver/solution_check.h"
#include "solver/solver.h"

namespace corvane::lp::testing {
namespace {

constexpr int kRows = 10;

// Random patterns of 1 to 4 rows, in batches, after a column for each row.
class GrowingLp {
 public:
  explicit GrowingLp(unsigned seed) : random_(seed) {
    const std::string senses(kRows, 'G');
    std::vector<double> rhs;
    for (int i = 0; i < kRows; ++i) {
      rhs.push_back(between(0, 5) == 0 ? 0 : between(1, 90));
    }
    EXPECT_TRUE(program_.setRows({kRows, rhs.data(), senses.data()}, 1));
    for (int i = 0; i < kRows; ++i) {
      add({{i, 1}}, 20);
    }
  }

  void grow(int columns) {
    for (int n = 0; n < columns; ++n) {
      std::vector<int> rolls(kRows, 0);
      for (int roll = between(1, 4); roll > 0; --roll) {
        ++rolls[static_cast<std::size_t>(between(0, kRows - 1))];
      }
      std::vector<std::pair<int, int>> entries;
      for (int i = 0; i < kRows; ++i) {
        if (const int count = rolls[static_cast<std::size_t>(i)]; count > 0) {
          entries.emplace_back(i, count);
        }
      }
      add(entries, between(0, 1) == 0 ? 20 : 24);
    }
  }

  LinearProgram &program() { return program_; }

 private:
  int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  void add(const std::vector<std::pair<int, int>> &entries, double cost) {
    ColumnPool column{.cost = {cost}, .lower = {0}, .upper = {1e20}, .row = {}, .value = {}};
    for (const auto &[row, count] : entries) {
      column.row.push_back(row);
      column.value.push_back(count);
    }
    EXPECT_TRUE(program_.addColumns(batchOf(column)));
  }

  std::mt19937 random_;
  LinearProgram program_;
};

double plainObjective(const LinearProgram &lp) {
  const Solution solution = PlainSolver().solve(lp, Method::kPrimal);
  EXPECT_EQ(solution.status, Status::kOptimal);
  return objectiveValue(lp, solution.activities);
}

void expectOptimal(const LinearProgram &lp, const Solution &solution) {
  ASSERT_EQ(solution.status, Status::kOptimal);
  EXPECT_EQ(checkOptimal(lp, solution), "");
  const double expected = plainObjective(lp);
  EXPECT_NEAR(objectiveValue(lp, solution.activities), expected, 1e-9 * (1.0 + expected));
}

struct Road {
  const char *name;
  Thresholds thresholds;
};

class Roads : public ::testing::TestWithParam<Road> {};

TEST_P(Roads, AMasterThatGrows) {
  for (const Method method : {Method::kPrimal, Method::kBarrier}) {
    GrowingLp growing(7);
    Solver solver(Plain::kOff, GetParam().thresholds);
    for (int turn = 0; turn < 12; ++turn) {
      expectOptimal(growing.program(), solver.solve(growing.program(), method, {}));
      growing.grow(turn % 3 == 0 ? 60 : 5);
    }
  }
}

TEST_P(Roads, FinalProgramsOfOneMatrix) {
  KnownMatrix known;
  for (int turn = 0; turn < 6; ++turn) {
    GrowingLp growing(11);
    growing.grow(200);
    std::vector<double> rhs;
    for (int i = 0; i < kRows; ++i) {
      rhs.push_back((i + turn) % 4 == 0 ? 0 : (i * 37 + turn * 101) % 50);
    }
    const std::string senses(kRows, 'G');
    LinearProgram program;
    ASSERT_TRUE(program.setRows({kRows, rhs.data(), senses.data()}, 1));
    ASSERT_TRUE(program.addColumns(batchOf(growing.program().pool())));
    Solver solver(Plain::kOff, GetParam().thresholds);
    const Solution solution = solver.solve(program, Method::kPrimal, known);
    expectOptimal(program, solution);
    solver.remember(program, solution, known);
    EXPECT_EQ(known.solutions, turn + 1);
  }
}

// Each moves one threshold, or those that belong together, to the far side of ten rows.
const Thresholds kAsShipped;
Thresholds sifts() {
  return {.wholePerRow = 0, .wholeKnownPerRow = 0, .leastMovedIn = 1};
}
Thresholds choosesAmongNewColumns() {
  return {.smallRows = 5, .smallestRows = 5, .leastMovedIn = 1};
}
Thresholds dropsSurplus() {
  return {.smallBatch = 10, .smallestRows = 5, .surplusPerRow = 1, .keptPerRow = 1};
}
Thresholds keepsTheBasisAlone() {
  return {.smallBatch = 0, .surplusPerRow = 1, .keptPerRow = 0};
}

INSTANTIATE_TEST_SUITE_P(Each, Roads,
                         ::testing::Values(Road{"AsShipped", kAsShipped}, Road{"Sifts", sifts()},
                                           Road{"ChoosesAmongNewColumns", choosesAmongNewColumns()},
                                           Road{"DropsSurplus", dropsSurplus()},
                                           Road{"KeepsTheBasisAlone", keepsTheBasisAlone()},
                                           Road{"SteepestEdges", {.dantzigRows = 0}},
                                           Road{"OtherFactorisation", {.otherFactorRows = 5}}),
                         [](const auto &road) { return std::string(road.param.name); });

TEST(Solver, PlainModesSolveCoveringProgramsToo) {
  for (const Plain plain : {Plain::kPrimal, Plain::kDual}) {
    GrowingLp growing(3);
    Solver solver(plain);
    for (int turn = 0; turn < 3; ++turn) {
      expectOptimal(growing.program(), solver.solve(growing.program(), Method::kPrimal, {}));
      growing.grow(20);
    }
  }
}

}  // namespace
}  // namespace corvane::lp::testing
