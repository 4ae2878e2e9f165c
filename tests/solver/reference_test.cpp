// The library against the reference: exhaustively on small LPs, at random on larger ones. Every
// optimal answer must also pass the checks of optimality.

#include "solver/reference_lp.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "solver/program_of.h"
#include "solver/solution_check.h"
#include "solver/test_lp.h"

namespace corvane::lp::testing {
namespace {

std::string text(const TestLp &lp) {
  std::string out = "sense " + std::to_string(lp.objectiveSense);
  const auto line = [&](const char *name, const std::vector<double> &values) {
    out += std::string("\n") + name;
    for (const double value : values) {
      out += ' ' + std::to_string(value);
    }
  };
  line("cost", lp.cost);
  for (std::size_t i = 0; i < lp.rhs.size(); ++i) {
    line("row ", lp.matrix[i]);
    out += std::string(" ") + lp.senses[i] + ' ' + std::to_string(lp.rhs[i]);
  }
  line("lower", lp.lower);
  line("upper", lp.upper);
  return out;
}

// True when the library says what the reference says.
bool agrees(const TestLp &lp, const TestAnswer &answer) {
  const ReferenceAnswer expected = ReferenceLp(lp).solve();
  EXPECT_EQ(answer.code, 0);
  EXPECT_EQ(answer.status, expected.status) << text(lp);
  if (answer.status == 1 && expected.status == 1) {
    EXPECT_NEAR(answer.objective, expected.objective,
                1e-9 * std::max(1.0, std::fabs(expected.objective)))
        << text(lp);
    EXPECT_EQ(checkOptimal(programOf(lp), solutionOf(lp, answer)), "") << text(lp);
  }
  return !::testing::Test::HasFailure();
}

bool solvesAlike(const TestLp &lp, bool barrier = false) {
  Session session;
  EXPECT_EQ(session.load(lp), 0);
  return agrees(lp, session.solve(lp.columns(), lp.rows(), barrier));
}

// Counts through all combinations of values: digit k of `number` in base `base`.
class Digits {
 public:
  explicit Digits(int number) : rest_(number) {}
  int next(int base) {
    const int digit = rest_ % base;
    rest_ /= base;
    return digit;
  }

 private:
  int rest_;
};

TEST(Reference, AllSmallCoveringPrograms) {
  // 2 rows, 2 columns, coefficients and demands 0 to 2, costs 0 to 2.
  for (int number = 0; number < 6561; ++number) {
    Digits digits(number);
    const auto next = [&] { return static_cast<double>(digits.next(3)); };
    TestLp lp;
    lp.matrix = {{next(), next()}, {next(), next()}};
    lp.rhs = {next(), next()};
    lp.cost = {next(), next()};
    lp.senses = "GG";
    lp.lower = {0, 0};
    lp.upper = {1e20, 1e20};
    ASSERT_TRUE(solvesAlike(lp));
  }
}

TEST(Reference, ManySmallGeneralPrograms) {
  // 2 rows, 2 columns, coefficients and costs -1 to 1, every sense, right-hand sides 0 and 1: every
  // eleventh of all of them, which takes in every value of every place.
  for (int number = 0; number < 729 * 9 * 4 * 2; number += 11) {
    Digits digits(number);
    const auto next = [&] { return static_cast<double>(digits.next(3) - 1); };
    TestLp lp;
    lp.matrix = {{next(), next()}, {next(), next()}};
    lp.cost = {next(), next()};
    lp.senses = {"GLE"[digits.next(3)], "GLE"[digits.next(3)]};
    lp.rhs = {static_cast<double>(digits.next(2)), static_cast<double>(digits.next(2))};
    lp.lower = {0, -1};
    lp.upper = {1e20, digits.next(2) == 0 ? 1e20 : 1};
    ASSERT_TRUE(solvesAlike(lp));
  }
}

class RandomLps {
 public:
  explicit RandomLps(unsigned seed) : random_(seed) {}

  int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  TestLp general(int columns, int rows) {
    TestLp lp;
    lp.objectiveSense = between(0, 1) == 0 ? 1 : -1;
    for (int j = 0; j < columns; ++j) {
      lp.cost.push_back(between(-4, 4));
      lp.lower.push_back(between(0, 1) == 0 ? 0 : between(-3, 1));
      const int kind = between(0, 3);
      lp.upper.push_back(kind == 0 ? lp.lower.back() + between(0, 4) : 1e20);
    }
    for (int i = 0; i < rows; ++i) {
      std::vector<double> row;
      for (int j = 0; j < columns; ++j) {
        row.push_back(between(0, 2) == 0 ? 0 : between(-4, 4));
      }
      lp.matrix.push_back(row);
      lp.senses += "GLE"[between(0, 2)];
      lp.rhs.push_back(between(-6, 6));
    }
    return lp;
  }

  TestLp covering(int columns, int rows) {
    TestLp lp;
    lp.cost = std::vector<double>(static_cast<std::size_t>(columns));
    for (double &cost : lp.cost) {
      cost = between(0, 9);
    }
    lp.lower.assign(lp.cost.size(), 0.0);
    lp.upper.assign(lp.cost.size(), 1e20);
    for (int i = 0; i < rows; ++i) {
      std::vector<double> row;
      for (int j = 0; j < columns; ++j) {
        row.push_back(std::max(0, between(-3, 4)));
      }
      lp.matrix.push_back(row);
      lp.senses += 'G';
      lp.rhs.push_back(between(-1, 8));
    }
    return lp;
  }

 private:
  std::mt19937 random_;
};

TEST(Reference, RandomGeneralPrograms) {
  RandomLps random(20261);
  for (int n = 0; n < 1500; ++n) {
    const int columns = random.between(1, 4);
    const int rows = random.between(1, 4);
    const TestLp lp = random.general(columns, rows);
    ASSERT_TRUE(solvesAlike(lp)) << n;
  }
}

TEST(Reference, RandomGeneralProgramsByBarrier) {
  RandomLps random(20262);
  for (int n = 0; n < 800; ++n) {
    const int columns = random.between(1, 4);
    const int rows = random.between(1, 4);
    const TestLp lp = random.general(columns, rows);
    ASSERT_TRUE(solvesAlike(lp, true)) << n;
  }
}

TEST(Reference, RandomCoveringPrograms) {
  RandomLps random(20263);
  for (int n = 0; n < 1500; ++n) {
    const int columns = random.between(1, 5);
    const int rows = random.between(1, 4);
    const TestLp lp = random.covering(columns, rows);
    ASSERT_TRUE(solvesAlike(lp, n % 2 == 1)) << n;
  }
}

TEST(Reference, ProgramsThatGrow) {
  RandomLps random(20264);
  for (int n = 0; n < 200; ++n) {
    const bool covering = n % 2 == 0;
    const TestLp lp = covering ? random.covering(5, 3) : random.general(5, 3);
    Session session;
    ASSERT_EQ(session.load(lp, 1), 0);
    TestLp part = lp;
    for (int columns = 1; columns <= 5; ++columns) {
      const auto size = static_cast<std::size_t>(columns);
      part.cost.assign(lp.cost.begin(), lp.cost.begin() + columns);
      part.lower.assign(lp.lower.begin(), lp.lower.begin() + columns);
      part.upper.assign(lp.upper.begin(), lp.upper.begin() + columns);
      for (std::size_t i = 0; i < 3; ++i) {
        part.matrix[i].assign(lp.matrix[i].begin(), lp.matrix[i].begin() + columns);
      }
      if (columns > 1) {
        ASSERT_EQ(session.add(lp, columns - 1, columns), 0);
      }
      ASSERT_TRUE(agrees(part, session.solve(static_cast<int>(size), 3))) << n;
    }
  }
}

}  // namespace
}  // namespace corvane::lp::testing
