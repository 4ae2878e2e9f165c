#pragma once

// A linear program as a test writes it down, and what the callable library answers to it.

#include <limits>
#include <string>
#include <vector>

#include "solver/callable_library.h"

namespace corvane::lp::testing {

inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct TestLp {
  int objectiveSense = 1;
  std::vector<double> cost = {};
  std::vector<std::vector<double>> matrix = {};  // one vector of coefficients for each row
  std::string senses = {};
  std::vector<double> rhs = {};
  std::vector<double> lower = {};
  std::vector<double> upper = {};

  int rows() const { return static_cast<int>(rhs.size()); }
  int columns() const { return static_cast<int>(cost.size()); }
};

// Columns [begin, end) in the arrays of the interface; zero coefficients are left out.
struct SparseColumns {
  std::vector<int> start, count, row;
  std::vector<double> value;

  SparseColumns(const TestLp &lp, int begin, int end) {
    for (int j = begin; j < end; ++j) {
      start.push_back(static_cast<int>(row.size()));
      for (int i = 0; i < lp.rows(); ++i) {
        const double coefficient =
            lp.matrix[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
        if (coefficient != 0.0) {
          row.push_back(i);
          value.push_back(coefficient);
        }
      }
      count.push_back(static_cast<int>(row.size()) - start.back());
    }
  }
};

struct TestAnswer {
  int code = 0;
  int status = 0;
  double objective = 0.0;
  std::vector<double> x, pi, dj;

  bool operator==(const TestAnswer &) const = default;
};

// An open environment with one problem in it.
class Session {
 public:
  Session() : env(CPXopenCPLEXruntime(nullptr, 0, nullptr)), lp(CPXcreateprob(env, nullptr, "t")) {}
  ~Session() { CPXcloseCPLEX(&env); }
  Session(const Session &) = delete;
  Session &operator=(const Session &) = delete;

  // Loads the first `columns` columns, all of them by default.
  int load(const TestLp &test, int columns = -1) {
    const int end = columns < 0 ? test.columns() : columns;
    const SparseColumns sparse(test, 0, end);
    return CPXcopylp(env, lp, end, test.rows(), test.objectiveSense, test.cost.data(),
                     test.rhs.data(), test.senses.data(), sparse.start.data(), sparse.count.data(),
                     sparse.row.data(), sparse.value.data(), test.lower.data(), test.upper.data(),
                     nullptr);
  }

  int add(const TestLp &test, int begin, int end) {
    const SparseColumns sparse(test, begin, end);
    return CPXaddcols(env, lp, end - begin, static_cast<int>(sparse.row.size()),
                      test.cost.data() + begin, sparse.start.data(), sparse.row.data(),
                      sparse.value.data(), test.lower.data() + begin, test.upper.data() + begin,
                      nullptr);
  }

  TestAnswer solve(int columns, int rows, bool barrier = false) {
    TestAnswer answer;
    answer.code = barrier ? CPXhybbaropt(env, lp, 'p') : CPXprimopt(env, lp);
    answer.status = CPXgetstat(env, lp);
    if (answer.status == 1) {
      answer.x.resize(static_cast<std::size_t>(columns));
      answer.dj.resize(static_cast<std::size_t>(columns));
      answer.pi.resize(static_cast<std::size_t>(rows));
      CPXgetobjval(env, lp, &answer.objective);
      CPXgetx(env, lp, answer.x.data(), 0, columns - 1);
      CPXgetdj(env, lp, answer.dj.data(), 0, columns - 1);
      CPXgetpi(env, lp, answer.pi.data(), 0, rows - 1);
    }
    return answer;
  }

  CPXENVptr env;
  CPXLPptr lp;
};

}  // namespace corvane::lp::testing
