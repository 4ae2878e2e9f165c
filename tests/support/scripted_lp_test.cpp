#include "scripted_lp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include "scripted_lp_simplex.h"
#include "solver/callable_library.h"
#include "temporary_folder.h"

namespace scripted_lp {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

Column MakeColumn(double cost, std::vector<int> rows, std::vector<double> values) {
  Column column;
  column.cost = cost;
  column.rows = std::move(rows);
  column.values = std::move(values);
  return column;
}

Lp MakeLp(const std::string &senses, std::vector<double> rhs, std::vector<Column> columns) {
  Lp lp;
  lp.senses.assign(senses.begin(), senses.end());
  lp.rhs = std::move(rhs);
  lp.columns = std::move(columns);
  return lp;
}

double RowActivity(const Lp &lp, const Solution &solution, std::size_t row) {
  double activity = 0.0;
  for (std::size_t j = 0; j < lp.columns.size(); ++j) {
    for (std::size_t k = 0; k < lp.columns[j].rows.size(); ++k) {
      if (static_cast<std::size_t>(lp.columns[j].rows[k]) == row) {
        activity += lp.columns[j].values[k] * solution.x[j];
      }
    }
  }
  return activity;
}

double ReducedCost(const Column &column, const std::vector<double> &pi) {
  double cost = column.cost;
  for (std::size_t k = 0; k < column.rows.size(); ++k) {
    cost -= pi[static_cast<std::size_t>(column.rows[k])] * column.values[k];
  }
  return cost;
}

// Feasible values, feasible duals and complementary slackness together prove optimality.
void ExpectOptimal(const Lp &lp, const Solution &solution) {
  constexpr double kNear = 1e-6;
  ASSERT_EQ(solution.status, kOptimal);
  for (std::size_t i = 0; i < lp.rhs.size(); ++i) {
    const double slack = RowActivity(lp, solution, i) - lp.rhs[i];
    EXPECT_NEAR(slack * solution.pi[i], 0.0, kNear);
    EXPECT_TRUE(lp.senses[i] != 'G' || (slack > -kNear && solution.pi[i] >= 0.0));
    EXPECT_TRUE(lp.senses[i] != 'L' || (slack < kNear && solution.pi[i] <= 0.0));
    EXPECT_TRUE(lp.senses[i] != 'E' || std::fabs(slack) < kNear);
  }
  for (std::size_t j = 0; j < lp.columns.size(); ++j) {
    EXPECT_GE(solution.x[j], 0.0);
    EXPECT_GE(solution.dj[j], -kNear);
    EXPECT_NEAR(solution.dj[j], ReducedCost(lp.columns[j], solution.pi), kNear);
    EXPECT_NEAR(solution.x[j] * solution.dj[j], 0.0, kNear);
  }
}

TEST(ScriptedLpSimplex, CoversTwoWidths) {
  const Lp lp = MakeLp("GG", {4.0, 7.0},
                       {MakeColumn(100.0, {0}, {1.0}), MakeColumn(100.0, {1}, {1.0}),
                        MakeColumn(100.0, {0}, {2.0}), MakeColumn(100.0, {0, 1}, {1.0, 2.0})});
  const Solution solution = Solve(lp);
  ExpectOptimal(lp, solution);
  EXPECT_DOUBLE_EQ(solution.objective, 375.0);
  EXPECT_THAT(solution.x, ElementsAre(0.0, 0.0, 0.25, 3.5));
  EXPECT_THAT(solution.pi, ElementsAre(50.0, 25.0));
}

TEST(ScriptedLpSimplex, ProvesOptimalityOnRandomCoverings) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    std::mt19937 random(seed);
    const std::size_t rows = 1 + random() % 20;
    Lp lp;
    for (std::size_t i = 0; i < rows; ++i) {
      lp.senses.push_back('G');
      lp.rhs.push_back(random() % 4 == 0 ? 0.0 : static_cast<double>(random() % 100));
      lp.columns.push_back(MakeColumn(80.0, {static_cast<int>(i)}, {1.0}));
    }
    for (auto n = random() % 60; n > 0; --n) {
      Column column = MakeColumn(80.0 + 10.0 * static_cast<double>(random() % 3), {}, {});
      for (std::size_t i = random() % 3; i < rows; i += 1 + random() % 5) {
        column.rows.push_back(static_cast<int>(i));
        column.values.push_back(static_cast<double>(1 + random() % 4));
      }
      lp.columns.push_back(column);
    }
    SCOPED_TRACE(seed);
    ExpectOptimal(lp, Solve(lp));
  }
}

TEST(ScriptedLpSimplex, SolvesMixedSenses) {
  const Lp lp = MakeLp("GLE", {1.0, 4.0, 3.0},
                       {MakeColumn(1.0, {0, 1}, {1.0, 1.0}), MakeColumn(-2.0, {1, 2}, {1.0, 1.0}),
                        MakeColumn(3.0, {2}, {1.0})});
  const Solution solution = Solve(lp);
  ExpectOptimal(lp, solution);
  EXPECT_DOUBLE_EQ(solution.objective, -5.0);
}

TEST(ScriptedLpSimplex, TellsInfeasibleAndUnbounded) {
  EXPECT_EQ(Solve(MakeLp("GL", {3.0, 2.0}, {MakeColumn(1.0, {0, 1}, {1.0, 1.0})})).status,
            kInfeasible);
  EXPECT_EQ(Solve(MakeLp("G", {3.0}, {})).status, kInfeasible);
  EXPECT_EQ(Solve(MakeLp("G", {3.0}, {MakeColumn(-1.0, {0}, {1.0})})).status, kUnbounded);
  EXPECT_EQ(
      Solve(MakeLp("G", {3.0}, {MakeColumn(1.0, {0}, {1.0}), MakeColumn(-1.0, {}, {})})).status,
      kUnbounded);
}

TEST(ScriptedLpSimplex, AnswersOtherForWhatItCannotSolve) {
  EXPECT_EQ(Solve(MakeLp("G", {NAN}, {MakeColumn(1.0, {0}, {1.0})})).status, kOther);
  EXPECT_EQ(Solve(MakeLp("G", {1.0}, {MakeColumn(INFINITY, {0}, {1.0})})).status, kOther);
  Lp bounded = MakeLp("G", {1.0}, {MakeColumn(1.0, {0}, {1.0})});
  bounded.columns[0].upper = 5.0;
  EXPECT_EQ(Solve(bounded).status, kOther);
}

class ScriptedLpTest : public testing::Test {
 protected:
  void SetUp() override { reset(); }
  void TearDown() override { reset(); }

  // Loads min 100 x0 subject to x0 >= 4.
  void Load() {
    int status = 0;
    env_ = CPXopenCPLEXruntime(&status, 0, nullptr);
    lp_ = CPXcreateprob(env_, &status, "selectPatterns");
    const double cost = 100.0;
    const double rhs = 4.0;
    const double one = 1.0;
    const double lower = 0.0;
    const double upper = 1e20;
    const int zero = 0;
    const int count = 1;
    copy_result_ = CPXcopylp(env_, lp_, 1, 1, 1, &cost, &rhs, "G", &zero, &count, &zero, &one,
                             &lower, &upper, nullptr);
  }

  int AddColumn(int row) {
    const double cost = 100.0;
    const double two = 2.0;
    const double lower = 0.0;
    const double upper = 1e20;
    const int zero = 0;
    return CPXaddcols(env_, lp_, 1, 1, &cost, &zero, &row, &two, &lower, &upper, nullptr);
  }

  CPXENVptr env_ = nullptr;
  CPXLPptr lp_ = nullptr;
  int copy_result_ = -1;
};

TEST_F(ScriptedLpTest, SolvesWhatWasLoadedAndAdded) {
  Load();
  EXPECT_EQ(copy_result_, 0);
  EXPECT_EQ(AddColumn(0), 0);
  EXPECT_EQ(CPXprimopt(env_, lp_), 0);
  EXPECT_EQ(CPXgetstat(env_, lp_), 1);
  std::vector<double> x(2);
  std::vector<double> dj(2);
  double pi = 0.0;
  double objective = 0.0;
  EXPECT_EQ(CPXgetx(env_, lp_, x.data(), 0, 1), 0);
  EXPECT_EQ(CPXgetdj(env_, lp_, dj.data(), 0, 1), 0);
  EXPECT_EQ(CPXgetpi(env_, lp_, &pi, 0, 0), 0);
  EXPECT_EQ(CPXgetobjval(env_, lp_, &objective), 0);
  EXPECT_THAT(x, ElementsAre(0.0, 2.0));
  EXPECT_THAT(dj, ElementsAre(50.0, 0.0));
  EXPECT_EQ(pi, 50.0);
  EXPECT_EQ(objective, 200.0);
  EXPECT_EQ(CPXfreeprob(env_, &lp_), 0);
  EXPECT_EQ(lp_, nullptr);
  EXPECT_EQ(CPXcloseCPLEX(&env_), 0);
  EXPECT_EQ(env_, nullptr);
}

TEST_F(ScriptedLpTest, RecordsEveryCallWithItsArguments) {
  Load();
  AddColumn(0);
  CPXhybbaropt(env_, lp_, 'p');
  double pi = 0.0;
  CPXgetpi(env_, lp_, &pi, 0, 0);
  EXPECT_THAT(
      calls(),
      ElementsAre("CPXopenCPLEXruntime(status=set, serial=0, licence=null) -> env1 status=0",
                  "CPXcreateprob(env=env1, status=set, name=selectPatterns) -> lp1 status=0",
                  "CPXcopylp(env=env1, lp=lp1, columns=1, rows=1, objective_sense=1, "
                  "objective=[100], rhs=[4], senses=[G], matbeg=[0], matcnt=[1], matind=[0], "
                  "matval=[1], lower=[0], upper=[1e+20], ranges=null) -> 0",
                  "CPXaddcols(env=env1, lp=lp1, columns=1, nonzeros=1, objective=[100], "
                  "matbeg=[0], matind=[0], matval=[2], lower=[0], upper=[1e+20], names=null) -> 0",
                  "CPXhybbaropt(env=env1, lp=lp1, method=112) -> 0",
                  "CPXgetpi(env=env1, lp=lp1, values=set, begin=0, end=0) -> 0 values=[50]"));
  EXPECT_THAT(calls_of("getpi"), SizeIs(1));
  EXPECT_THAT(calls_of("open"), SizeIs(1));
}

TEST_F(ScriptedLpTest, FollowsTheScript) {
  set_script(" createprob:2=null; primopt:2+=1217 ;getstat:1=3;getpi:1=[0.5,-1];copylp:1=-7;");
  Load();
  EXPECT_EQ(copy_result_, -7);
  int status = 0;
  EXPECT_EQ(CPXcreateprob(env_, &status, "second"), nullptr);
  EXPECT_EQ(status, 1001);
  EXPECT_EQ(CPXprimopt(env_, lp_), 0);
  EXPECT_EQ(CPXprimopt(env_, lp_), 1217);
  EXPECT_EQ(CPXprimopt(env_, lp_), 1217);
  EXPECT_EQ(CPXgetstat(env_, lp_), 3);
  EXPECT_EQ(CPXgetstat(env_, lp_), 1);  // of the solve that worked, of an LP never loaded
  std::vector<double> pi = {9.0, 9.0, 9.0};
  EXPECT_EQ(CPXgetpi(env_, lp_, pi.data(), 0, 2), 0);
  EXPECT_THAT(pi, ElementsAre(0.5, -1.0, 9.0));
  EXPECT_THAT(calls().back(), EndsWith("-> 0 values=[0.5 -1]"));
}

TEST_F(ScriptedLpTest, FailsAnOpenWithTheStatusOfTheScript) {
  set_script("open:1=32201");
  int status = 0;
  EXPECT_EQ(CPXopenCPLEXruntime(&status, 0, nullptr), nullptr);
  EXPECT_EQ(status, 32201);
  EXPECT_NE(CPXopenCPLEXruntime(&status, 0, nullptr), nullptr);
  EXPECT_EQ(status, 0);
}

TEST_F(ScriptedLpTest, RefusesDeadHandlesAndBadArguments) {
  Load();
  EXPECT_EQ(AddColumn(1), 1200);
  double pi = 0.0;
  EXPECT_EQ(CPXgetpi(env_, lp_, &pi, 0, 0), 1217);
  EXPECT_EQ(CPXprimopt(env_, lp_), 0);
  EXPECT_EQ(CPXgetpi(env_, lp_, &pi, 0, 1), 1200);
  const CPXLPptr freed = lp_;
  EXPECT_EQ(CPXfreeprob(env_, &lp_), 0);
  EXPECT_EQ(CPXprimopt(env_, freed), 1001);
  EXPECT_EQ(CPXprimopt(env_, nullptr), 1001);
  const CPXENVptr closed = env_;
  EXPECT_EQ(CPXcloseCPLEX(&env_), 0);
  EXPECT_EQ(CPXcreateprob(closed, nullptr, "late"), nullptr);
  EXPECT_THAT(calls().back(), HasSubstr("env=env1, status=null, name=late) -> null status=1001"));
}

TEST_F(ScriptedLpTest, ForgetsEverythingAtReset) {
  set_script("open:2+=null");
  Load();
  reset();
  EXPECT_THAT(calls(), SizeIs(0));
  Load();
  Load();
  EXPECT_NE(env_, nullptr);
}

TEST_F(ScriptedLpTest, TakesScriptAndFileFromTheEnvironment) {
  const corvane::support::TemporaryFolder folder;
  const std::string path = folder.file("calls");
  setenv("CORVANE_SCRIPTED_LP_LOG", path.c_str(), 1);
  setenv("CORVANE_SCRIPTED_LP_SCRIPT", "open:1=5", 1);
  scripted_lp_reset_from_environment();
  unsetenv("CORVANE_SCRIPTED_LP_LOG");
  unsetenv("CORVANE_SCRIPTED_LP_SCRIPT");
  int status = 0;
  EXPECT_EQ(CPXopenCPLEXruntime(&status, 0, nullptr), nullptr);
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  EXPECT_EQ(content.str(),
            "CPXopenCPLEXruntime(status=set, serial=0, licence=null) -> null status=5\n");
}

using ScriptedLpDeathTest = ScriptedLpTest;

TEST_F(ScriptedLpDeathTest, EndsAtAScriptItCannotRead) {
  for (const char *script : {"primopt", "primopt:0=1", "primopt:x=1", "solve:1=1", "primopt:1=",
                             "primopt:1=null", "getstat:1=[1]", "open:1=0", "getpi:1=[1,a]"}) {
    EXPECT_DEATH(set_script(script), "cannot read the script entry") << script;
  }
}

}  // namespace
}  // namespace scripted_lp
