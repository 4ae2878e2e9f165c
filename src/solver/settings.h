#pragma once

namespace corvane::lp {

// How an environment solves, for measurements and for finding faults; read from the process
// environment when it is opened.
struct Settings {
  // CORVANE_LP_PLAIN: "primal" (or 1) solves every LP with CLP's warm primal simplex over all
  // columns, "dual" with its cold dual simplex.
  enum class Plain { kOff, kPrimal, kDual };
  Plain plain = Plain::kOff;

  // CORVANE_LP_CHECK=1: every optimal answer is checked, and a wrong one stops the process.
  bool check = false;

  static Settings fromProcessEnvironment();
};

}  // namespace corvane::lp
