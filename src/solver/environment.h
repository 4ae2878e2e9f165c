#pragma once

// What stands behind the handles of callable_library.h. An environment owns its problems.

#include <memory>
#include <vector>

#include "solver/corner_choice.h"
#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/solver.h"

struct cpxlp {
  cpxlp(cpxenv &owner, corvane::lp::Plain plain) : environment(&owner), solver(plain) {}

  cpxenv *environment;
  corvane::lp::LinearProgram program;
  // False from a failed load on, until a load succeeds: there is nothing to solve then.
  bool loaded = true;
  corvane::lp::Solver solver;
  corvane::lp::Solution solution;
};

struct cpxenv {
  // CORVANE_LP_PLAIN in the process environment: "primal" or "dual" for that simplex over all
  // columns, whatever the program.
  explicit cpxenv(corvane::lp::Plain plain) : mode(plain) {}

  corvane::lp::Plain mode;
  // Of the problem freed last: the next one often differs in its right-hand sides only.
  corvane::lp::KnownMatrix known;
  std::vector<std::unique_ptr<cpxlp>> problems;
};
