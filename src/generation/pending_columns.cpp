#include "generation/pending_columns.h"

#include "core/fatal.h"

namespace corvane {

namespace {

constexpr std::size_t kFirstColumns = 128;
constexpr std::size_t kFirstNonzeros = 512;

}  // namespace

void PendingColumns::prepare() {
  release();
  requireObjective(columns_.objective.reserve(kFirstColumns));
  requireMatrix(columns_.starts.reserve(kFirstColumns) &&
                columns_.indices.reserve(kFirstNonzeros) &&
                columns_.values.reserve(kFirstNonzeros));
  requireLower(columns_.lower.reserve(kFirstColumns));
  requireUpper(columns_.upper.reserve(kFirstColumns));
}

void PendingColumns::append(double cost, const QLinkedList<double> &widths,
                            const std::vector<double> &rowWidths) {
  tallyWidths(widths, tally_);
  requireObjective(columns_.objective.append(cost));
  requireMatrix(columns_.starts.append(static_cast<int>(columns_.values.size())));
  for (const TallyEntry &entry : tally_) {
    requireMatrix(columns_.indices.append(rowOf(entry.width, rowWidths)) &&
                  columns_.values.append(static_cast<double>(entry.count)));
  }
  requireLower(columns_.lower.append(0.0));
  requireUpper(columns_.upper.append(LpArrays::kInfinity));
}

void PendingColumns::release() {
  columns_.objective.release();
  columns_.starts.release();
  columns_.indices.release();
  columns_.values.release();
  columns_.lower.release();
  columns_.upper.release();
}

void PendingColumns::requireObjective(bool had) {
  if (!had) {
    endRun(log_,
           "Error: Could not allocate memory for additional objective function coefficients.");
  }
}

void PendingColumns::requireMatrix(bool had) {
  if (!had) {
    endRun(log_, "Error: Could not allocate memory for additions to the constraint matrix.");
  }
}

void PendingColumns::requireLower(bool had) {
  if (!had) {
    endRun(log_, "Error: Could not allocate memory for additions to the lower bounds.");
  }
}

void PendingColumns::requireUpper(bool had) {
  if (!had) {
    endRun(log_, "Error: Could not allocate memory for additions to the upper bounds.");
  }
}

}  // namespace corvane
