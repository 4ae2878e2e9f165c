#include "plan/compact_lp.h"

namespace corvane::plan {

namespace {

constexpr int kNo = -1;

// A store that nothing is cut for has no rows.
bool isFed(const Store &store) {
  return !store.patterns.empty();
}

}  // namespace

CompactLp::CompactLp(const PlanProblem &problem) : periods_(problem.periodCount()) {
  addRows(problem);
  for (Index pattern = 0; pattern < problem.patterns.size(); ++pattern) {
    addPattern(problem, pattern);
  }
  addShips(problem);
  addSurplusAndStock(problem);
  addUnmet(problem);
}

int CompactLp::addRow(RowRole role, double low, double high) {
  rows_.push_back(role);
  return model_.addRow(low, high);
}

int CompactLp::addColumn(ColumnRole role, double cost, double high,
                         const std::vector<Entry> &entries) {
  columns_.push_back(role);
  return model_.addColumn(cost, 0.0, high, entries);
}

void CompactLp::addRows(const PlanProblem &problem) {
  machineRows_.assign(problem.machines.size() * periods_, kNo);
  storeRows_.assign(problem.stores.size() * periods_, kNo);
  orderRows_.assign(problem.orders.size() * periods_, kNo);
  unmet_.assign(problem.orders.size() * periods_, kNo);
  for (Index period = 0; period < periods_; ++period) {
    for (Index machine = 0; machine < problem.machines.size(); ++machine) {
      machineRows_[machine * periods_ + period] = addRow(
          {RowKind::kMachine, machine, period}, -kInfinite, problem.machines[machine].days[period]);
    }
    for (Index store = 0; store < problem.stores.size(); ++store) {
      if (isFed(problem.stores[store])) {
        storeRows_[store * periods_ + period] = addRow({RowKind::kStore, store, period}, 0.0, 0.0);
      }
    }
    for (Index index = 0; index < problem.orders.size(); ++index) {
      const Order &order = problem.orders[index];
      if (order.demand[period] > 0.0 && order.reach[period] == Reason::kMet) {
        orderRows_[index * periods_ + period] =
            addRow({RowKind::kOrder, index, period}, order.demand[period], order.demand[period]);
      }
    }
  }
}

void CompactLp::addPattern(const PlanProblem &problem, Index pattern) {
  reels_.resize((pattern + 1) * periods_, kNo);
  for (std::size_t period = 0; period < periods_; ++period) {
    if (problem.runs(problem.patterns[pattern], period)) {
      addReels(problem, pattern, period);
    }
  }
}

void CompactLp::addReels(const PlanProblem &problem, Index index, std::size_t period) {
  const Pattern &pattern = problem.patterns[index];
  const Cutter &cutter = problem.cutters[pattern.cutter];
  std::vector<Entry> entries{{machineRow(cutter.machine, period), 1.0 / cutter.capacity}};
  const auto at = static_cast<Index>(period);
  for (Index yield = 0; yield < pattern.yields.size(); ++yield) {
    const Yield &rolls = pattern.yields[yield];
    if (rolls.rolls == 0.0) {
      continue;
    }
    if (rolls.stores.size() == 1) {
      entries.push_back({storeRow(rolls.stores.front(), period), rolls.rolls});
    } else {
      entries.push_back({addRow({RowKind::kSplit, index, at, yield}, 0.0, 0.0), rolls.rolls});
    }
  }
  reels_[index * periods_ + period] =
      addColumn({ColumnKind::kReels, index, at}, pattern.cost[period], kInfinite, entries);
  for (const Entry &entry : entries) {
    const RowRole &role = rows_[static_cast<std::size_t>(entry.row)];
    if (role.kind == RowKind::kSplit) {
      addSplit(problem, role, entry.row);
    }
  }
}

// The rolls of a split yield, store by store.
void CompactLp::addSplit(const PlanProblem &problem, const RowRole &row, int number) {
  const Pattern &pattern = problem.patterns[row.what];
  const Yield &yield = pattern.yields[row.yield];
  for (Index store = 0; store < yield.stores.size(); ++store) {
    addColumn({ColumnKind::kSplit, row.what, row.period, row.yield, store}, 0.0, kInfinite,
              {{number, -1.0}, {storeRow(yield.stores[store], row.period), 1.0}});
  }
}

void CompactLp::addShips(const PlanProblem &problem) {
  for (Index index = 0; index < problem.routes.size(); ++index) {
    const Route &route = problem.routes[index];
    if (!isFed(problem.stores[route.store])) {
      continue;
    }
    for (Index period = 0; period < periods_; ++period) {
      const Index arrival = route.arrival[period];
      if (arrival != kNone && orderRow(route.order, arrival) != kNo) {
        addColumn({ColumnKind::kShip, index, period}, route.cost[period], kInfinite,
                  {{storeRow(route.store, period), -1.0}, {orderRow(route.order, arrival), 1.0}});
      }
    }
  }
}

void CompactLp::addSurplusAndStock(const PlanProblem &problem) {
  for (Index index = 0; index < problem.stores.size(); ++index) {
    const Store &store = problem.stores[index];
    if (!isFed(store)) {
      continue;
    }
    for (Index period = 0; period < periods_; ++period) {
      addColumn({ColumnKind::kSurplus, index, period}, store.surplusCost[period], kInfinite,
                {{storeRow(index, period), -1.0}});
      if (store.stockMax[period] > 0.0 && period + 1 < periods_) {
        addColumn({ColumnKind::kStock, index, period}, 0.0, store.stockMax[period],
                  {{storeRow(index, period), -1.0}, {storeRow(index, period + 1), 1.0}});
      }
    }
  }
}

void CompactLp::addUnmet(const PlanProblem &problem) {
  for (Index index = 0; index < problem.orders.size(); ++index) {
    for (Index period = 0; period < periods_; ++period) {
      if (const int row = orderRow(index, period); row != kNo) {
        const int column = addColumn({ColumnKind::kUnmet, index, period}, 0.0,
                                     problem.orders[index].demand[period], {{row, 1.0}});
        unmet_[index * periods_ + period] = column;
        unmetColumns_.push_back(column);
      }
    }
  }
}

Basis CompactLp::idleBasis() const {
  Basis basis;
  for (const ColumnRole &role : columns_) {
    const bool isBasic = role.kind == ColumnKind::kUnmet || role.kind == ColumnKind::kSurplus;
    basis.columns.push_back(isBasic ? Place::kBasic : Place::kLow);
  }
  for (const RowRole &role : rows_) {
    const bool isBasic = role.kind == RowKind::kMachine || role.kind == RowKind::kSplit;
    basis.rows.push_back(isBasic ? Place::kBasic : Place::kLow);
  }
  return basis;
}

double CompactLp::unmetWeight(const PlanProblem &problem, int column) const {
  const ColumnRole &role = this->column(column);
  return problem.orders[role.what].undercost[role.period] / problem.highestUndercost;
}

std::vector<std::string> columnNames(const CompactLp &lp) {
  static constexpr const char *kKinds[] = {"reels", "ship", "surplus", "stock", "unmet", "split"};
  std::vector<std::string> names;
  for (int column = 0; column < lp.model().columns(); ++column) {
    const ColumnRole &role = lp.column(column);
    std::string name = kKinds[static_cast<std::size_t>(role.kind)];
    name += '_' + std::to_string(role.what) + '_' + std::to_string(role.period);
    if (role.kind == ColumnKind::kSplit) {
      name += '_' + std::to_string(role.yield) + '_' + std::to_string(role.store);
    }
    names.push_back(std::move(name));
  }
  return names;
}

}  // namespace corvane::plan
