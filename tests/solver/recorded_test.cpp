// Whole column generations, replayed through every way of solving. Every answer must pass the
// checks of optimality, and all ways must find the same objective.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "solver/cutting_stock.h"
#include "solver/linear_program.h"
#include "solver/program_of.h"
#include "solver/solution_check.h"

namespace corvane::lp::testing {
namespace {

// Sets CORVANE_LP_PLAIN for the environments opened in its lifetime.
class PlainMode {
 public:
  explicit PlainMode(const char *mode) { setenv("CORVANE_LP_PLAIN", mode, 1); }
  ~PlainMode() { unsetenv("CORVANE_LP_PLAIN"); }
  PlainMode(const PlainMode &) = delete;
  PlainMode &operator=(const PlainMode &) = delete;
};

class Environment {
 public:
  Environment() : env(CPXopenCPLEXruntime(nullptr, 0, nullptr)) {}
  ~Environment() { CPXcloseCPLEX(&env); }
  Environment(const Environment &) = delete;
  Environment &operator=(const Environment &) = delete;
  CPXENVptr env;
};

LinearProgram programWithRows(const std::vector<double> &rhs) {
  const std::string senses(rhs.size(), 'G');
  LinearProgram program;
  EXPECT_TRUE(program.setRows({static_cast<int>(rhs.size()), rhs.data(), senses.data()}, 1));
  return program;
}

// Checks the answer that `problem` holds to `program`, and returns its objective.
double checkedObjective(const Problem &problem, const LinearProgram &program) {
  Solution answer;
  answer.status = Status::kOptimal;
  answer.duals = problem.duals();
  const std::vector<double> x = problem.x();
  for (std::size_t j = 0; j < x.size(); ++j) {
    if (x[j] != 0.0) {
      answer.activities.emplace_back(static_cast<int>(j), x[j]);
    }
  }
  EXPECT_EQ(checkOptimal(program, answer), "");
  const std::vector<double> reducedCosts = problem.reducedCosts();
  for (int j = 0; j < program.columns(); ++j) {
    EXPECT_EQ(reducedCosts[static_cast<std::size_t>(j)],
              reducedCost(program.pool(), j, answer.duals.data()));
  }
  return problem.objective();
}

// The objectives of all solves, in order.
std::vector<double> replay(const MillRecord &record, bool barrier = false) {
  const Environment environment;
  std::vector<double> objectives;
  for (const MasterRecord &master : record.masters) {
    LinearProgram program = programWithRows(master.rhs);
    Problem problem(environment.env);
    for (std::size_t b = 0; b < master.batches.size(); ++b) {
      EXPECT_TRUE(program.addColumns(batchOf(master.batches[b])));
      EXPECT_EQ(
          b == 0 ? problem.load(master.batches[b], master.rhs) : problem.add(master.batches[b]), 0);
      EXPECT_EQ(problem.solve(barrier), 1);
      objectives.push_back(checkedObjective(problem, program));
    }
  }
  for (const std::vector<double> &rhs : record.finalRhs) {
    LinearProgram program = programWithRows(rhs);
    EXPECT_TRUE(program.addColumns(batchOf(record.finalColumns)));
    Problem problem(environment.env);
    EXPECT_EQ(problem.load(record.finalColumns, rhs), 0);
    EXPECT_EQ(problem.solve(barrier), 1);
    objectives.push_back(checkedObjective(problem, program));
    problem.free();
  }
  return objectives;
}

void expectClose(const std::vector<double> &objectives, const std::vector<double> &expected) {
  ASSERT_EQ(objectives.size(), expected.size());
  for (std::size_t i = 0; i < objectives.size(); ++i) {
    EXPECT_NEAR(objectives[i], expected[i], 1e-9 * std::fabs(expected[i])) << i;
  }
}

class Recorded : public ::testing::TestWithParam<MillShape> {};

TEST_P(Recorded, AllWaysOfSolvingAgree) {
  const MillRecord record = CuttingStock(GetParam()).run();
  ASSERT_GT(record.masters.front().batches.size(), 1U);
  std::vector<double> expected;
  {
    const PlainMode mode("primal");
    expected = replay(record);
  }
  expectClose(replay(record), expected);
  expectClose(replay(record, true), expected);
  const PlainMode mode("dual");
  expectClose(replay(record), expected);
}

std::string nameOf(const ::testing::TestParamInfo<MillShape> &shape) {
  return std::to_string(shape.param.widths) + "Widths" + std::to_string(shape.param.deckles) +
         "Deckles" + std::to_string(shape.param.periods) + "Periods" +
         std::to_string(shape.param.patternsPerIteration) + "Patterns";
}

// Below and above most thresholds as shipped; roads_test.cpp takes small programs past each.
INSTANTIATE_TEST_SUITE_P(
    Mills, Recorded,
    ::testing::Values(
        MillShape{.widths = 6, .periods = 2, .seed = 3},
        MillShape{.widths = 20, .periods = 3, .patternsPerIteration = 1000, .seed = 4},
        MillShape{.widths = 45, .deckles = 2, .periods = 2, .seed = 5},
        MillShape{.widths = 60,
                  .deckles = 3,
                  .periods = 3,
                  .maxWidthsInPattern = 10,
                  .patternsPerIteration = 500,
                  .deckleInches = 200.0,
                  .seed = 6},
        MillShape{.widths = 110, .periods = 2, .patternsPerIteration = 60, .seed = 7}),
    nameOf);

// Everything that a caller can read from a run, bit for bit.
std::vector<double> allNumbers(const MillRecord &record, bool barrier) {
  const Environment environment;
  std::vector<double> numbers;
  const auto take = [&](const Problem &problem) {
    numbers.push_back(problem.objective());
    for (const std::vector<double> &part : {problem.x(), problem.duals(), problem.reducedCosts()}) {
      numbers.insert(numbers.end(), part.begin(), part.end());
    }
  };
  for (const MasterRecord &master : record.masters) {
    Problem problem(environment.env);
    problem.load(master.batches[0], master.rhs);
    for (std::size_t b = 0; b < master.batches.size(); ++b) {
      if (b > 0) {
        problem.add(master.batches[b]);
      }
      problem.solve(barrier);
      take(problem);
    }
  }
  for (const std::vector<double> &rhs : record.finalRhs) {
    Problem problem(environment.env);
    problem.load(record.finalColumns, rhs);
    problem.solve(barrier);
    take(problem);
    problem.free();
  }
  return numbers;
}

// Leaves the heap in another state: other addresses, other bytes in fresh memory.
std::vector<std::vector<char>> stirHeap() {
  std::vector<std::vector<char>> kept;
  for (std::size_t n = 1; n < 3000; ++n) {
    std::vector<char> block(n * 37 % 9000 + 1, static_cast<char>(0xA5));
    if (n % 3 == 0) {
      kept.push_back(std::move(block));
    }
  }
  return kept;
}

void expectTheSameBitsTwice(const MillShape &shape) {
  const MillRecord record = CuttingStock(shape).run();
  for (const bool barrier : {false, true}) {
    const std::vector<double> first = allNumbers(record, barrier);
    ASSERT_FALSE(first.empty());
    // Kept until the second run is over.
    [[maybe_unused]] const std::vector<std::vector<char>> blocks = stirHeap();
    EXPECT_EQ(allNumbers(record, barrier), first);
  }
}

TEST(RecordedTwice, TheSameCallsGiveTheSameBits) {
  expectTheSameBitsTwice({.widths = 50, .deckles = 2, .periods = 2, .seed = 8});
}

// A final LP remembers the one before it: that must not show in what is optimal.
TEST(RecordedFinal, AMatrixThatComesAgainWithOtherDemands) {
  const MillShape shape{.widths = 20, .patternsPerIteration = 1000, .seed = 9};
  const MillRecord record = CuttingStock(shape).run();
  const Environment environment;
  std::vector<double> rhs = record.finalRhs.front();
  for (std::size_t turn = 0; turn < 12; ++turn) {
    for (std::size_t i = 0; i < rhs.size(); ++i) {
      rhs[i] = (i + turn) % 4 == 0 ? 0.0 : static_cast<double>((i * 37 + turn * 101) % 500);
    }
    LinearProgram program = programWithRows(rhs);
    ASSERT_TRUE(program.addColumns(batchOf(record.finalColumns)));
    Problem problem(environment.env);
    ASSERT_EQ(problem.load(record.finalColumns, rhs), 0);
    ASSERT_EQ(problem.solve(), 1);
    checkedObjective(problem, program);
    problem.free();
  }
}

TEST(RecordedFinal, AnotherMatrixInBetween) {
  const MillRecord one = CuttingStock({.widths = 20, .patternsPerIteration = 500}).run();
  const MillRecord other =
      CuttingStock({.widths = 25, .patternsPerIteration = 500, .seed = 2}).run();
  const Environment environment;
  for (const MillRecord *record : {&one, &other, &one, &one, &other}) {
    LinearProgram program = programWithRows(record->finalRhs[0]);
    ASSERT_TRUE(program.addColumns(batchOf(record->finalColumns)));
    Problem problem(environment.env);
    ASSERT_EQ(problem.load(record->finalColumns, record->finalRhs[0]), 0);
    ASSERT_EQ(problem.solve(), 1);
    checkedObjective(problem, program);
    problem.free();
  }
}

// Not a byte on either channel, whatever is asked.
TEST(RecordedSilence, NothingIsPrinted) {
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  const MillRecord record = CuttingStock({.widths = 30, .deckles = 2, .periods = 2}).run();
  allNumbers(record, true);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace corvane::lp::testing
