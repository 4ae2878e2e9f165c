#include "plan/plan_tables.h"

#include "formats/csv_writer.h"
#include "formats/number_text.h"
#include "plan/unmet_reasons.h"

namespace corvane::plan {

namespace {

std::string number(double value) {
  return std::string(NumberText(value).view());
}

// "2 x 41.125 + 1 x 33.75"
std::string rollsText(const PlanRecord &record, const Pattern &pattern) {
  std::string text;
  for (const auto &[width, rolls] : rollsByWidth(record.network, pattern)) {
    text += (text.empty() ? "" : " + ") + number(rolls) + " x " + width;
  }
  return text;
}

void writeRuns(const PlanRecord &record, std::ostream &out) {
  const PlanProblem &problem = record.problem;
  CsvWriter csv(out);
  csv.row("period", "machine", "cutter", "grade", "deckle", "pattern", "rolls", "reels", "trim");
  for (std::size_t period = 0; period < problem.periodCount(); ++period) {
    for (std::size_t index = 0; index < problem.patterns.size(); ++index) {
      const double reels = record.plan.reels[index * problem.periodCount() + period];
      if (reels > 0.0) {
        const Pattern &pattern = problem.patterns[index];
        const Cutter &cutter = problem.cutters[pattern.cutter];
        csv.row(problem.periods[period], problem.machines[cutter.machine].name, cutter.name,
                pattern.grade, cutter.deckleWidth, pattern.name, rollsText(record, pattern), reels,
                pattern.trim);
      }
    }
  }
}

void writeShipments(const PlanRecord &record, std::ostream &out) {
  const PlanProblem &problem = record.problem;
  CsvWriter csv(out);
  csv.row("leaves", "arrives", "mode", "from", "to", "width", "rolls", "cost");
  for (std::size_t period = 0; period < problem.periodCount(); ++period) {
    for (std::size_t index = 0; index < problem.routes.size(); ++index) {
      const double rolls = record.plan.ships[index * problem.periodCount() + period];
      if (rolls > 0.0) {
        const Route &route = problem.routes[index];
        csv.row(problem.periods[period], problem.periods[route.arrival[period]], route.mode,
                problem.stores[route.store].name, problem.orders[route.order].name,
                problem.stores[route.store].width, rolls, rolls * route.cost[period]);
      }
    }
  }
}

// "the machines that could make it in time are full: M_AF1 in 2, M_BF3 in 2"
std::string whyText(const PlanProblem &problem, const Order &order, std::size_t period,
                    Reason reason) {
  std::string text(reasonText(reason));
  if (reason == Reason::kMachineTime) {
    const char *separator = ": ";
    for (const MachineTime &time : possibleMakers(problem, order, period)) {
      text +=
          separator + problem.machines[time.machine].name + " in " + problem.periods[time.period];
      separator = ", ";
    }
  }
  return text;
}

void writeOrders(const PlanRecord &record, std::ostream &out) {
  const PlanProblem &problem = record.problem;
  CsvWriter csv(out);
  csv.row("order", "set", "width", "period", "ordered", "delivered", "unmet", "why");
  for (std::size_t index = 0; index < problem.orders.size(); ++index) {
    const Order &order = problem.orders[index];
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      const std::size_t at = index * problem.periodCount() + period;
      if (const double demand = order.demand[period]; demand > 0.0) {
        const double unmet = record.plan.unmet[at];
        csv.row(order.name, order.set, order.width, problem.periods[period], demand, demand - unmet,
                unmet, unmet > 0.0 ? whyText(problem, order, period, record.plan.reasons[at]) : "");
      }
    }
  }
}

void writeMachines(const PlanRecord &record, std::ostream &out) {
  const PlanProblem &problem = record.problem;
  const std::vector<double> used = usedDays(problem, record.plan);
  CsvWriter csv(out);
  csv.row("machine", "period", "used", "available");
  for (std::size_t machine = 0; machine < problem.machines.size(); ++machine) {
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      csv.row(problem.machines[machine].name, problem.periods[period],
              used[machine * problem.periodCount() + period],
              problem.machines[machine].days[period]);
    }
  }
}

void writeSurplus(const PlanRecord &record, std::ostream &out) {
  const PlanProblem &problem = record.problem;
  CsvWriter csv(out);
  csv.row("store", "width", "period", "rolls", "cost");
  for (std::size_t index = 0; index < problem.stores.size(); ++index) {
    const Store &store = problem.stores[index];
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      const double rolls = record.plan.surplus[index * problem.periodCount() + period];
      if (rolls > 0.0) {
        csv.row(store.name, store.width, problem.periods[period], rolls,
                rolls * store.surplusCost[period]);
      }
    }
  }
}

void writeStock(const PlanRecord &record, std::ostream &out) {
  const PlanProblem &problem = record.problem;
  CsvWriter csv(out);
  csv.row("store", "width", "period", "rolls");
  for (std::size_t index = 0; index < problem.stores.size(); ++index) {
    const Store &store = problem.stores[index];
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      const double rolls = record.plan.stock[index * problem.periodCount() + period];
      if (rolls > 0.0) {
        csv.row(store.name, store.width, problem.periods[period], rolls);
      }
    }
  }
}

void writeTotals(const PlanRecord &record, std::ostream &out) {
  const Totals &totals = record.totals;
  CsvWriter csv(out);
  csv.row("what", "unit", "amount");
  csv.row("reels", "reels", totals.reels);
  csv.row("ordered", "rolls", totals.orderedRolls);
  csv.row("ordered", "inches", totals.orderedInches);
  csv.row("delivered", "rolls", totals.deliveredRolls);
  csv.row("delivered", "inches", totals.deliveredInches);
  csv.row("unmet", "rolls", totals.unmetRolls);
  csv.row("unmet", "inches", totals.unmetInches);
  csv.row("unmet, out of reach", "rolls", totals.unmetOutOfReach);
  csv.row("paper", "inches", totals.deckleInches);
  csv.row("trim", "inches", totals.trimInches);
  csv.row("surplus", "rolls", totals.surplusRolls);
  csv.row("surplus", "inches", totals.surplusInches);
  csv.row("feed", "money", totals.cost.feed);
  csv.row("waste", "money", totals.cost.waste);
  csv.row("freight", "money", totals.cost.freight);
  csv.row("machine time", "money", totals.cost.machineTime);
  csv.row("surplus", "money", totals.cost.surplus);
  csv.row("total cost", "money", totals.cost.total());
  csv.row("shortage", "money", totals.shortageCost);
}

}  // namespace

const std::vector<PlanTable> &planTables() {
  static const std::vector<PlanTable> kTables = {
      {"runs.csv", writeRuns},       {"shipments.csv", writeShipments},
      {"orders.csv", writeOrders},   {"machines.csv", writeMachines},
      {"surplus.csv", writeSurplus}, {"stock.csv", writeStock},
      {"totals.csv", writeTotals},
  };
  return kTables;
}

}  // namespace corvane::plan
