#pragma once

// One CLP model over a chosen part of a linear program's columns, with all rows that may bind.
//
// CLP is used plainly: silent, no scaling, no presolve, everything else its default. Costs and
// bounds of unusual size are handed over times a power of two, which is exact and keeps CLP's
// absolute tolerances meaningful; every number that comes back is in the caller's units again.
//
// Any operation may throw std::bad_alloc or what CLP throws; after that the object can only be
// destroyed.

#include <memory>
#include <span>
#include <vector>

#include "solver/linear_program.h"
#include "solver/solution.h"
#include "solver/thresholds.h"

class ClpSimplex;
class CoinMessageHandler;

namespace corvane::lp {

class WorkingLp {
 public:
  // Holds the rows of `lp` and the given columns, each named by its index in the pool and given at
  // most once, at the slack basis. `lp` must outlive it; columns that the pool gains later are
  // taken in by addColumns.
  WorkingLp(const LinearProgram &lp, std::vector<int> columns);
  ~WorkingLp();
  WorkingLp(const WorkingLp &) = delete;
  WorkingLp &operator=(const WorkingLp &) = delete;

  // Appends columns at a bound and keeps the basis.
  void addColumns(std::span<const int> columns);

  // Each starts from the present basis. An iteration limit far above what any solve needs turns a
  // solve that gets nowhere into kOther.
  Status primal();
  Status dual();

  // To be called before solves that go on from an optimum: with few rows, and with many, the primal
  // simplex is quicker then. The basis stays.
  void expectWarmStarts(const Thresholds &thresholds);

  // Barrier, crossover, and a clean-up that ends at a vertex; see clp_model.h. For covering
  // programs.
  Status barrier();

  // The pool indices, in CLP's order. Positions below are positions in this list.
  const std::vector<int> &columns() const { return columns_; }

  // The basis. A row that was not handed over is basic, and must not be made anything else.
  bool isBasic(int position) const;
  bool rowIsBasic(int row) const;
  void makeBasic(int position);
  void makeRowNonbasic(int row);

  // Another cost for the solves to come, and no activity of a row above its lower bound.
  void setCost(int position, double cost);
  void forbidExcess(int row);

  // Of the last solve, which must have been optimal.
  Activities activities() const;
  std::vector<double> duals() const;

  // The power of two that costs are handed to CLP with.
  double costScale() const { return costScale_; }

  // False when the program has grown numbers of another magnitude since construction, or columns
  // that a row which was left out might bind: a new working LP is due.
  bool stillFits() const;

 private:
  template <typename Operation>
  void guarded(Operation operation);
  void load();
  Status run(bool useDual);
  double value(int position) const;

  const LinearProgram &lp_;
  std::vector<int> columns_;
  std::vector<int> rows_;    // of the program, in CLP's order
  std::vector<int> clpRow_;  // of each row of the program, -1 for one that was not handed over
  double costScale_;
  double boundScale_;
  std::unique_ptr<CoinMessageHandler> silence_;
  std::unique_ptr<ClpSimplex> clp_;
};

}  // namespace corvane::lp
