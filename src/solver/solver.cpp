#include "solver/solver.h"

#include <numeric>
#include <optional>
#include <utility>

#include "solver/column_choice.h"
#include "solver/trivial_lp.h"

namespace corvane::lp {

namespace {

std::vector<int> allColumns(const LinearProgram &lp) {
  std::vector<int> columns(static_cast<std::size_t>(lp.columns()));
  std::iota(columns.begin(), columns.end(), 0);
  return columns;
}

}  // namespace

void Solver::startSifting(const LinearProgram &lp, const KnownMatrix &known) {
  firstColumns_ = lp.columns();
  isKnown_ = known.pool == lp.pool();
  const long long whole = isKnown_ ? thresholds_.wholeKnownPerRow : thresholds_.wholePerRow;
  sifting_ = std::make_unique<Sifting>(lp,
                                       lp.columns() <= whole * lp.rows() ? allColumns(lp)
                                       : isKnown_ ? startingColumns(lp, known.promising)
                                                  : startingColumns(lp, {}),
                                       thresholds_);
}

void Solver::takeInNewColumns(const LinearProgram &lp) {
  const bool smallBatch = lp.columns() - seenColumns_ <= thresholds_.smallBatch;
  if (!smallBatch || lp.rows() >= thresholds_.smallestRows) {
    sifting_->dropSurplus(duals_);
  }
  if (smallBatch && lp.rows() < thresholds_.smallRows) {
    sifting_->takeInFrom(seenColumns_);
  } else {
    sifting_->moveInViolated(duals_);
  }
}

Status Solver::sift(const LinearProgram &lp, Method method, const KnownMatrix &known) {
  if (sifting_ != nullptr) {
    isKnown_ = false;
    takeInNewColumns(lp);
    return sifting_->optimise(method);
  }
  startSifting(lp, known);
  // No cost is negative, so the slack basis is dual feasible.
  return sifting_->optimise(method == Method::kBarrier ? method : Method::kDual);
}

void Solver::remember(LinearProgram &lp, const Solution &solution, KnownMatrix &known) {
  if (sifting_ == nullptr || lp.columns() != firstColumns_ || solution.status != Status::kOptimal) {
    return;
  }
  KnownMatrix now;
  now.promising = promisingColumns(lp, sifting_->working().columns(), solution);
  now.uses = isKnown_ ? known.uses : std::vector<int>(static_cast<std::size_t>(lp.columns()), 0);
  now.solutions = isKnown_ ? known.solutions : 0;
  countUses(now, solution.activities);
  sifting_.reset();
  now.pool = lp.releasePool();
  known = std::move(now);
}

Solution Solver::solve(const LinearProgram &lp, Method method, const KnownMatrix &known) {
  try {
    return solveOrThrow(lp, method, known);
  } catch (...) {
    // What CLP holds is of no use any more; the pool has all it takes to start again.
    sifting_.reset();
    plain_ = {};
    throw;
  }
}

Solution Solver::solveOrThrow(const LinearProgram &lp, Method method, const KnownMatrix &known) {
  if (std::optional<Solution> solution = solveTrivial(lp)) {
    return *std::move(solution);
  }
  if (mode_ == Plain::kOff && lp.isCovering()) {
    const Status status = sift(lp, method, known);
    seenColumns_ = lp.columns();
    if (status == Status::kOptimal) {
      Solution solution = sifting_->solution();
      duals_ = solution.duals;
      if (isKnown_) {
        solution.activities = chooseCorner(lp, sifting_->working(), solution, known);
      }
      return solution;
    }
    sifting_.reset();
  }
  return plain_.solve(lp, mode_ == Plain::kDual ? Method::kDual : Method::kPrimal);
}

}  // namespace corvane::lp
