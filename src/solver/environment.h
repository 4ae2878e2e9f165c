#pragma once

// What stands behind the handles of callable_library.h. An environment owns its problems.

#include <memory>
#include <vector>

#include "solver/answer.h"
#include "solver/linear_program.h"
#include "solver/settings.h"
#include "solver/solver.h"

struct cpxlp {
  explicit cpxlp(cpxenv &owner) : environment(&owner) {}

  cpxenv *environment;
  corvane::lp::LinearProgram program;
  // False from a failed load on, until a load succeeds: there is nothing to solve then.
  bool loaded = true;
  corvane::lp::Solver solver;
  corvane::lp::Answer answer;
};

struct cpxenv {
  explicit cpxenv(const corvane::lp::Settings &chosen) : settings(chosen) {}

  corvane::lp::Settings settings;
  // Of the problem freed last: the next one often differs in its right-hand sides only.
  corvane::lp::KnownMatrix known;
  std::vector<std::unique_ptr<cpxlp>> problems;
};
