#include "plan/reel_neighbourhood.h"

#include <algorithm>
#include <cmath>

namespace corvane::plan {

namespace {

// A plan is better when it is by this, relative to the whole objective and in money.
constexpr double kNoise = 1e-9;
constexpr double kLeastGain = 1e-4;

}  // namespace

ReelNeighbourhood::ReelNeighbourhood(const ReelSpace &space, const ReelPlan &plan,
                                     const std::vector<int> &reels)
    : space_(space), plan_(plan) {
  freeColumns(reels);
  for (const int column : columns_) {
    objective_ += space_.costs()[static_cast<std::size_t>(column)] *
                  plan_.values[static_cast<std::size_t>(column)];
  }
  addColumns();
}

void ReelNeighbourhood::free(int column) {
  if (placeOf_.try_emplace(column, static_cast<int>(columns_.size())).second) {
    columns_.push_back(column);
  }
}

void ReelNeighbourhood::freeColumns(const std::vector<int> &reels) {
  std::vector<int> touched;
  for (const int column : reels) {
    free(column);
    for (const int row : space_.rowsOf(column)) {
      if (rows_.try_emplace(row, 0).second) {
        touched.push_back(row);
      }
    }
  }
  // The stores behind splits come in too while the list grows.
  for (std::size_t i = 0; i < touched.size(); ++i) {
    if (space_.lp().row(touched[i]).kind == RowKind::kSplit) {
      for (const int column : space_.columnsOf(touched[i])) {
        for (const int row : space_.rowsOf(column)) {
          if (space_.lp().column(column).kind == ColumnKind::kSplit &&
              rows_.try_emplace(row, 0).second) {
            touched.push_back(row);
          }
        }
      }
    }
  }
  for (const int row : touched) {
    freeRollsOf(row);
  }
}

// Columns that a fixed one would have to follow stay fixed: stock that another store takes over,
// and splits of reels that are not free.
void ReelNeighbourhood::freeRollsOf(int row) {
  for (const int column : space_.columnsOf(row)) {
    const ColumnKind kind = space_.lp().column(column).kind;
    if (kind == ColumnKind::kShip) {
      free(column);
      const int orderRow = space_.rowsOf(column).back();
      rows_.try_emplace(orderRow, 0);
      const RowRole &order = space_.lp().row(orderRow);
      free(space_.lp().unmetColumn(order.what, order.period));
    } else if (kind != ColumnKind::kReels) {
      const std::span<const int> rows = space_.rowsOf(column);
      if (std::all_of(rows.begin(), rows.end(),
                      [this](int other) { return rows_.contains(other); })) {
        free(column);
      }
    }
  }
}

// What the columns that stay put into the row.
double ReelNeighbourhood::fixedLoad(int row) const {
  double load = 0;
  for (const int column : space_.columnsOf(row)) {
    if (!placeOf_.contains(column)) {
      const std::span<const int> rows = space_.rowsOf(column);
      const auto at =
          static_cast<std::size_t>(std::find(rows.begin(), rows.end(), row) - rows.begin());
      load += space_.entriesOf(column)[at] * plan_.values[static_cast<std::size_t>(column)];
    }
  }
  return load;
}

int ReelNeighbourhood::addRow(int row) {
  const auto at = static_cast<std::size_t>(row);
  const double load = fixedLoad(row);
  return model_.addRow(space_.model().rowLower[at] - load, space_.model().rowUpper[at] - load);
}

void ReelNeighbourhood::addColumns() {
  std::vector<char> isAdded(static_cast<std::size_t>(space_.model().rows()), 0);
  for (const int column : columns_) {
    const auto at = static_cast<std::size_t>(column);
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < space_.rowsOf(column).size(); ++i) {
      const int row = space_.rowsOf(column)[i];
      if (isAdded[static_cast<std::size_t>(row)] == 0) {
        isAdded[static_cast<std::size_t>(row)] = 1;
        rows_[row] = addRow(row);
      }
      entries.push_back({rows_[row], space_.entriesOf(column)[i]});
    }
    model_.addColumn(space_.costs()[at], space_.model().lower[at], space_.model().upper[at],
                     entries);
    model_.whole.back() = space_.lp().column(column).kind == ColumnKind::kReels ? 1 : 0;
  }
}

NeighbourhoodResult ReelNeighbourhood::search(WholeLimits limits) const {
  limits.cutoff = objective_ - kLeastGain - kNoise * std::fabs(plan_.objective);
  const WholeAnswer answer = solveWhole(model_, limits);
  if (!answer.isFound) {
    return {std::nullopt, answer.isOptimal};
  }
  ReelPlan better = plan_;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    better.values[static_cast<std::size_t>(columns_[i])] = std::max(answer.values[i], 0.0);
  }
  better.objective = space_.objectiveOf(better.values);
  const bool isBetter = better.objective < plan_.objective;
  return {isBetter ? std::optional(std::move(better)) : std::nullopt, answer.isOptimal};
}

}  // namespace corvane::plan
