#include "solver/solver.h"

#include <numeric>
#include <utility>

#include "solver/trivial_lp.h"

namespace corvane::lp {

namespace {

// With few rows and small batches CLP is quicker than the choice of what to give it; with fewer
// still, than the choice of what to take from it.
constexpr int kSmallRows = 64;
constexpr int kSmallestRows = 40;
constexpr int kSmallBatch = 100;

// Up to this many columns a row, a dual simplex on all of them is quicker than sifting from a
// start set; from a set known to be promising sifting pays sooner.
constexpr long long kWholeColumnsPerRow = 40;
constexpr long long kWholeKnownColumnsPerRow = 10;

std::vector<int> allColumns(const LinearProgram &lp) {
  std::vector<int> columns(static_cast<std::size_t>(lp.columns()));
  std::iota(columns.begin(), columns.end(), 0);
  return columns;
}

}  // namespace

void Solver::startSifting(const LinearProgram &lp, const KnownMatrix &known) {
  firstColumns_ = lp.columns();
  const bool isKnown = known.pool == lp.pool();
  const long long whole = isKnown ? kWholeKnownColumnsPerRow : kWholeColumnsPerRow;
  sifting_ = std::make_unique<Sifting>(lp, lp.columns() <= whole * lp.rows() ? allColumns(lp)
                                           : isKnown ? startingColumns(lp, known.promising)
                                                     : startingColumns(lp, {}));
}

void Solver::takeInNewColumns(const LinearProgram &lp) {
  const bool smallBatch = lp.columns() - seenColumns_ <= kSmallBatch;
  if (!smallBatch || lp.rows() >= kSmallestRows) {
    sifting_->dropSurplus(duals_);
  }
  if (smallBatch && lp.rows() < kSmallRows) {
    sifting_->takeInFrom(seenColumns_);
  } else {
    sifting_->moveInViolated(duals_);
  }
}

Status Solver::sift(const LinearProgram &lp, Method method, const KnownMatrix &known) {
  if (sifting_ != nullptr) {
    takeInNewColumns(lp);
    return sifting_->optimise(method);
  }
  startSifting(lp, known);
  // No cost is negative, so the slack basis is dual feasible.
  return sifting_->optimise(method == Method::kBarrier ? method : Method::kDual);
}

std::vector<int> Solver::promising(const LinearProgram &lp, const Answer &answer) const {
  if (sifting_ == nullptr || lp.columns() != firstColumns_ || answer.status != Status::kOptimal) {
    return {};
  }
  return promisingColumns(lp, sifting_->working().columns(), answer);
}

Answer Solver::solve(const LinearProgram &lp, Method method, const Settings &settings,
                     const KnownMatrix &known) {
  try {
    return solveOrThrow(lp, method, settings, known);
  } catch (...) {
    // What CLP holds is of no use any more; the pool has all it takes to start again.
    sifting_.reset();
    plain_ = {};
    throw;
  }
}

Answer Solver::solveOrThrow(const LinearProgram &lp, Method method, const Settings &settings,
                            const KnownMatrix &known) {
  if (std::optional<Answer> answer = solveTrivial(lp)) {
    return *std::move(answer);
  }
  if (settings.plain == Settings::Plain::kOff && lp.isCovering()) {
    const Status status = sift(lp, method, known);
    seenColumns_ = lp.columns();
    if (status == Status::kOptimal) {
      Answer answer = sifting_->answer();
      duals_ = answer.duals;
      return answer;
    }
    sifting_.reset();
  }
  const bool dual = settings.plain == Settings::Plain::kDual;
  return plain_.solve(lp, dual ? Method::kDual : Method::kPrimal);
}

}  // namespace corvane::lp
