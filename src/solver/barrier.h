#pragma once

class ClpSimplex;

namespace corvane::lp {

// Solves by CLP's barrier with crossover and leaves `clp` at a basis from which a dual simplex
// finishes at a vertex: every column and row that is neither basic nor at a bound is moved to one.
void solveByBarrier(ClpSimplex &clp);

}  // namespace corvane::lp
