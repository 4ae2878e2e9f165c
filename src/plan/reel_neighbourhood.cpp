#include "plan/reel_neighbourhood.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvane::plan {

namespace {

// What a solution must gain: twice the noise, so that it still counts as better when it is a plan.
constexpr double kWantedGain = 2 * kLeastGain;
constexpr double kWantedRolls = 2 * kLeastRolls;

// The first row holds what is unmet.
constexpr int kUnmetRow = 0;

double sum(const std::vector<double> &values, const std::vector<double> &factors) {
  return std::inner_product(values.begin(), values.end(), factors.begin(), 0.0);
}

}  // namespace

ReelNeighbourhood::ReelNeighbourhood(const ReelSpace &space, const ReelPlan &plan,
                                     const std::vector<int> &reels, double span)
    : space_(space), plan_(plan) {
  freeColumns(reels);
  for (const int column : columns_) {
    values_.push_back(plan_.values[static_cast<std::size_t>(column)]);
    weights_.push_back(space_.unmetWeights()[static_cast<std::size_t>(column)]);
  }
  addColumns(span);
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
    touchRowsOf(column, touched);
  }
  // The stores behind splits come in too while the list grows.
  for (std::size_t i = 0; i < touched.size(); ++i) {
    if (space_.lp().row(touched[i]).kind == RowKind::kSplit) {
      for (const int column : space_.columnsOf(touched[i])) {
        if (space_.lp().column(column).kind == ColumnKind::kSplit) {
          touchRowsOf(column, touched);
        }
      }
    }
  }
  for (const int row : touched) {
    freeRollsOf(row);
  }
}

// Appends those that were not touched before.
void ReelNeighbourhood::touchRowsOf(int column, std::vector<int> &touched) {
  for (const int row : space_.rowsOf(column)) {
    if (rows_.try_emplace(row, 0).second) {
      touched.push_back(row);
    }
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

void ReelNeighbourhood::addColumns(double span) {
  model_.addRow(-kInfinite, kInfinite);
  std::vector<char> isAdded(static_cast<std::size_t>(space_.model().rows()), 0);
  for (const int column : columns_) {
    const auto at = static_cast<std::size_t>(column);
    std::vector<Entry> entries;
    if (space_.unmetWeights()[at] > 0) {
      entries.push_back({kUnmetRow, space_.unmetWeights()[at]});
    }
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
    if (space_.lp().column(column).kind == ColumnKind::kReels) {
      model_.whole.back() = 1;
      model_.lower.back() = std::max(model_.lower.back(), plan_.values[at] - span);
      model_.upper.back() = std::min(model_.upper.back(), plan_.values[at] + span);
    }
  }
}

NeighbourhoodResult ReelNeighbourhood::search(WholeLimits limits) const {
  if (sum(values_, weights_) > kWantedRolls) {
    limits.seconds /= 2;
  }
  const WholeAnswer more = deliverMore(limits);
  const std::vector<double> &start = more.isFound ? more.values : values_;
  const double cost = sum(start, model_.cost);
  const WholeAnswer less = costLess(limits, sum(start, weights_), cost);
  NeighbourhoodResult result{std::nullopt, more.isOptimal && less.isOptimal};
  if (more.isFound || less.isFound) {
    ReelPlan plan = planWith(less.isFound ? less.values : more.values);
    if (isBetter(plan, plan_)) {
      result.plan = std::move(plan);
    }
  }
  return result;
}

// The first step: the least unmet rolls, if fewer than the plan's. Nothing is asked where none are.
WholeAnswer ReelNeighbourhood::deliverMore(WholeLimits limits) const {
  const double unmet = sum(values_, weights_);
  if (unmet <= kWantedRolls) {
    WholeAnswer answer;
    answer.isOptimal = true;
    return answer;
  }
  limits.cutoff = unmet - kWantedRolls - kNoisePart * plan_.unmet;
  LinearModel model = model_;
  model.cost = weights_;
  return solveWhole(model, limits);
}

// The second step: less cost than this, with at most so many rolls unmet.
WholeAnswer ReelNeighbourhood::costLess(WholeLimits limits, double unmet, double cost) const {
  limits.cutoff = cost - kWantedGain - kNoisePart * std::fabs(plan_.cost);
  LinearModel model = model_;
  model.rowUpper[kUnmetRow] = unmet;
  for (std::size_t at = 0; unmet <= kWantedRolls && at < weights_.size(); ++at) {
    model.upper[at] = weights_[at] > 0 ? 0 : model.upper[at];
  }
  return solveWhole(model, limits);
}

ReelPlan ReelNeighbourhood::planWith(const std::vector<double> &values) const {
  std::vector<double> all = plan_.values;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    all[static_cast<std::size_t>(columns_[i])] = std::max(values[i], 0.0);
  }
  return space_.planOf(std::move(all));
}

std::size_t ReelNeighbourhood::fingerprint() const {
  std::size_t hash = 0;
  const auto mix = [&hash](double value) {
    hash ^= std::hash<double>()(value) + 0x9e3779b97f4a7c15U + (hash << 6U) + (hash >> 2U);
  };
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    mix(columns_[i]);
    mix(values_[i]);
  }
  for (const double bound : model_.rowUpper) {
    mix(bound);
  }
  return hash;
}

}  // namespace corvane::plan
