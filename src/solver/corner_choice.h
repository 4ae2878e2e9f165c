#pragma once

// Which of the optima of one LP to answer with, where it has several.
//
// A period's LP often has many optimal corners: every mix of patterns without trim costs the same
// paper. Left to itself a simplex that starts from the last period's columns ends at that period's
// corner again, and the periods together hold few patterns. Their union is what a plan chooses
// from, so each LP that comes again with other right-hand sides moves, among its optima, to a
// corner whose columns serve rows that columns of their cost have served least.
//
// At an optimum with duals y the optima are the solutions of the rows that use only columns with
// c_j - A_j'y = 0 and leave no row with y_i > 0 above its demand. Over these the least of other
// costs is looked for, by a warm primal simplex; y stays, and belongs to every optimum.

#include <vector>

#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/working_lp.h"

namespace corvane::lp {

// What is known of a matrix from the times that it was solved, with other right-hand sides.
struct KnownMatrix {
  ColumnPool pool;
  std::vector<int> promising;  // columns worth starting from, ascending
  std::vector<int> uses;       // of each column: the solutions that held it
  int solutions = 0;
};

// Adds a solution to what is known. REQUIRES that `uses` has an entry for each column.
void countUses(KnownMatrix &known, const Activities &activities);

// The optimum of a covering program that is chosen, given one of them, `solution`, and the working
// set that ended there. Of a program that has no other, or where CLP finds none, that one.
// REQUIRES that `known` is of this matrix. The same calls give the same choice.
Activities chooseCorner(const LinearProgram &lp, const WorkingLp &working, const Solution &solution,
                        const KnownMatrix &known);

}  // namespace corvane::lp
