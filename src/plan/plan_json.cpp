#include "plan/plan_json.h"

#include <map>

#include "formats/json_writer.h"
#include "plan/unmet_reasons.h"

namespace corvane::plan {

namespace {

class PlanJson {
 public:
  PlanJson(const PlanRecord &record, std::ostream &out)
      : record_(record),
        network_(record.network),
        problem_(record.problem),
        plan_(record.plan),
        periods_(record.problem.periodCount()),
        json_(out) {}

  void write() {
    json_.beginObject();
    json_.member("schema", kPlanSchema);
    writeHead();
    writeTotals();
    writeMachines();
    writeCutters();
    writePatterns();
    writeOrders();
    writeShipments();
    writeModes();
    writeStores("surplus", plan_.surplus, true);
    writeStores("stock", plan_.stock, false);
    json_.endObject();
  }

 private:
  const std::string &periodName(std::size_t period) const { return problem_.periods[period]; }

  void beginList(const char *name) {
    json_.key(name);
    json_.beginArray();
  }

  void writeHead() {
    json_.key("periods");
    json_.beginArray(JsonWriter::kOneLine);
    for (const std::string &period : problem_.periods) {
      json_.value(period);
    }
    json_.endArray();
    writeOptions();
    writeSolver();
    beginList("warnings");
    for (const network::Warning &warning : record_.warnings) {
      json_.beginObject(JsonWriter::kOneLine);
      json_.member("line", qint64{warning.line});
      json_.member("kind", warning.kind);
      json_.member("text", warning.text);
      json_.endObject();
    }
    json_.endArray();
    beginList("advice");
    for (const Advice &advice : record_.advice) {
      json_.beginObject(JsonWriter::kOneLine);
      json_.member("kind", advice.kind);
      json_.member("text", advice.text);
      json_.endObject();
    }
    json_.endArray();
    beginList("faults");
    for (const std::string &fault : record_.faults) {
      json_.value(fault);
    }
    json_.endArray();
  }

  void writeOptions() {
    const ProblemOptions &options = problem_.options;
    json_.key("options");
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("storage", options.freeStock ? "inf" : "file");
    json_.member("delays", options.delaysByMill ? "by-mill" : "file");
    json_.member("keep_impossible", options.keepImpossible);
    json_.member("whole_reels", record_.solver.wholeReels);
    json_.endObject();
  }

  void writeSolver() {
    const SolverRecord &solver = record_.solver;
    json_.key("solver");
    json_.beginObject();
    json_.member("rows", solver.rows);
    json_.member("columns", solver.columns);
    json_.member("nonzeros", solver.nonzeros);
    json_.member("lp_unmet", solver.lpUnmet);
    json_.member("lp_cost", solver.lpCost);
    if (!solver.way.empty()) {
      json_.member("way", solver.way);
    }
    if (solver.gapToLp) {
      json_.member("gap_to_lp", *solver.gapToLp);
    }
    for (const auto &[name, value] : solver.figures) {
      json_.member(name, value);
    }
    if (!solver.seconds.empty()) {
      json_.key("seconds");
      json_.beginObject(JsonWriter::kOneLine);
      for (const auto &[step, seconds] : solver.seconds) {
        json_.member(step, seconds);
      }
      json_.endObject();
    }
    json_.endObject();
  }

  void writeTotals() {
    const Totals &totals = record_.totals;
    json_.key("totals");
    json_.beginObject();
    json_.member("reels", totals.reels);
    json_.member("ordered_rolls", totals.orderedRolls);
    json_.member("ordered_inches", totals.orderedInches);
    json_.member("delivered_rolls", totals.deliveredRolls);
    json_.member("delivered_inches", totals.deliveredInches);
    json_.member("unmet_rolls", totals.unmetRolls);
    json_.member("unmet_inches", totals.unmetInches);
    json_.member("unmet_out_of_reach", totals.unmetOutOfReach);
    json_.member("deckle_inches", totals.deckleInches);
    json_.member("trim_inches", totals.trimInches);
    json_.member("surplus_rolls", totals.surplusRolls);
    json_.member("surplus_inches", totals.surplusInches);
    json_.key("cost");
    json_.beginObject();
    json_.member("feed", totals.cost.feed);
    json_.member("waste", totals.cost.waste);
    json_.member("freight", totals.cost.freight);
    json_.member("machine_time", totals.cost.machineTime);
    json_.member("surplus", totals.cost.surplus);
    json_.member("total", totals.cost.total());
    json_.endObject();
    json_.member("shortage_cost", totals.shortageCost);
    json_.endObject();
  }

  void writeMachines() {
    const std::vector<double> used = usedDays(problem_, plan_);
    beginList("machines");
    for (std::size_t machine = 0; machine < problem_.machines.size(); ++machine) {
      for (std::size_t period = 0; period < periods_; ++period) {
        json_.beginObject(JsonWriter::kOneLine);
        json_.member("machine", problem_.machines[machine].name);
        json_.member("period", periodName(period));
        json_.member("used", used[machine * periods_ + period]);
        json_.member("available", problem_.machines[machine].days[period]);
        json_.endObject();
      }
    }
    json_.endArray();
  }

  void writeCutters() {
    std::vector<double> reels(problem_.cutters.size() * periods_);
    for (std::size_t pattern = 0; pattern < problem_.patterns.size(); ++pattern) {
      for (std::size_t period = 0; period < periods_; ++period) {
        reels[problem_.patterns[pattern].cutter * periods_ + period] +=
            plan_.reels[pattern * periods_ + period];
      }
    }
    beginList("cutters");
    for (std::size_t index = 0; index < problem_.cutters.size(); ++index) {
      const Cutter &cutter = problem_.cutters[index];
      for (std::size_t period = 0; period < periods_; ++period) {
        const double made = reels[index * periods_ + period];
        json_.beginObject(JsonWriter::kOneLine);
        json_.member("cutter", cutter.name);
        json_.member("machine", problem_.machines[cutter.machine].name);
        json_.member("grade", cutter.grade);
        json_.member("deckle", cutter.deckleWidth);
        json_.member("capacity", cutter.capacity);
        json_.member("period", periodName(period));
        json_.member("reels", made);
        json_.member("days", made > 0.0 ? made / cutter.capacity : 0.0);
        json_.endObject();
      }
    }
    json_.endArray();
  }

  void writePatterns() {
    beginList("patterns");
    for (std::size_t period = 0; period < periods_; ++period) {
      for (std::size_t index = 0; index < problem_.patterns.size(); ++index) {
        const double reels = plan_.reels[index * periods_ + period];
        if (reels > 0.0) {
          writePattern(problem_.patterns[index], period, reels);
        }
      }
    }
    json_.endArray();
  }

  void writePattern(const Pattern &pattern, std::size_t period, double reels) {
    const Cutter &cutter = problem_.cutters[pattern.cutter];
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("pattern", pattern.name);
    json_.member("grade", pattern.grade);
    json_.member("cutter", cutter.name);
    json_.member("machine", problem_.machines[cutter.machine].name);
    json_.member("period", periodName(period));
    json_.member("reels", reels);
    json_.key("rolls");
    json_.beginObject(JsonWriter::kOneLine);
    for (const auto &[width, rolls] : rollsByWidth(network_, pattern)) {
      json_.member(width, rolls);
    }
    json_.endObject();
    json_.member("trim", pattern.trim);
    json_.member("offered", pattern.offered);
    json_.endObject();
  }

  void writeOrders() {
    beginList("orders");
    for (std::size_t index = 0; index < problem_.orders.size(); ++index) {
      for (std::size_t period = 0; period < periods_; ++period) {
        if (problem_.orders[index].demand[period] > 0.0) {
          writeOrder(index, period);
        }
      }
    }
    json_.endArray();
  }

  void writeOrder(std::size_t index, std::size_t period) {
    const Order &order = problem_.orders[index];
    const double unmet = plan_.unmet[index * periods_ + period];
    const Reason reason = plan_.reasons[index * periods_ + period];
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("order", order.name);
    json_.member("set", order.set);
    json_.member("width", order.width);
    json_.member("period", periodName(period));
    json_.member("demand", order.demand[period]);
    json_.member("delivered", order.demand[period] - unmet);
    json_.member("unmet", unmet);
    json_.key("reason");
    if (unmet > 0.0) {
      json_.value(reasonName(reason));
    } else {
      json_.null();
    }
    if (unmet > 0.0 && reason == Reason::kMachineTime) {
      json_.key("full");
      json_.beginArray(JsonWriter::kOneLine);
      for (const MachineTime &time : possibleMakers(problem_, order, period)) {
        json_.beginObject(JsonWriter::kOneLine);
        json_.member("machine", problem_.machines[time.machine].name);
        json_.member("period", periodName(time.period));
        json_.endObject();
      }
      json_.endArray();
    }
    json_.endObject();
  }

  void writeShipments() {
    beginList("shipments");
    for (std::size_t index = 0; index < problem_.routes.size(); ++index) {
      const Route &route = problem_.routes[index];
      for (std::size_t period = 0; period < periods_; ++period) {
        const double rolls = plan_.ships[index * periods_ + period];
        if (rolls == 0.0) {
          continue;
        }
        json_.beginObject(JsonWriter::kOneLine);
        json_.member("mode", route.mode);
        json_.member("from", problem_.stores[route.store].name);
        json_.member("to", problem_.orders[route.order].name);
        json_.member("leaves", periodName(period));
        json_.member("arrives", periodName(route.arrival[period]));
        json_.member("rolls", rolls);
        json_.member("cost", rolls * route.cost[period]);
        json_.endObject();
      }
    }
    json_.endArray();
  }

  void writeModes() {
    struct Use {
      double rolls = 0.0;
      double inches = 0.0;
      double cost = 0.0;
    };
    std::map<std::string, Use> modes;
    for (std::size_t index = 0; index < problem_.routes.size(); ++index) {
      const Route &route = problem_.routes[index];
      Use &use = modes[route.mode];
      for (std::size_t period = 0; period < periods_; ++period) {
        const double rolls = plan_.ships[index * periods_ + period];
        use.rolls += rolls;
        use.inches += rolls * problem_.stores[route.store].width;
        use.cost += rolls * route.cost[period];
      }
    }
    beginList("modes");
    for (const auto &[mode, use] : modes) {
      json_.beginObject(JsonWriter::kOneLine);
      json_.member("mode", mode);
      json_.member("rolls", use.rolls);
      json_.member("inches", use.inches);
      json_.member("cost", use.cost);
      json_.endObject();
    }
    json_.endArray();
  }

  void writeStores(const char *name, const std::vector<double> &values, bool withCost) {
    beginList(name);
    for (std::size_t index = 0; index < problem_.stores.size(); ++index) {
      const Store &store = problem_.stores[index];
      for (std::size_t period = 0; period < periods_; ++period) {
        const double rolls = values[index * periods_ + period];
        if (rolls == 0.0) {
          continue;
        }
        json_.beginObject(JsonWriter::kOneLine);
        json_.member("store", store.name);
        json_.member("width", store.width);
        json_.member("period", periodName(period));
        json_.member("rolls", rolls);
        if (withCost) {
          json_.member("cost", rolls * store.surplusCost[period]);
        }
        json_.endObject();
      }
    }
    json_.endArray();
  }

  const PlanRecord &record_;
  const Network &network_;
  const PlanProblem &problem_;
  const Plan &plan_;
  std::size_t periods_;
  JsonWriter json_;
};

}  // namespace

void writePlanJson(const PlanRecord &record, std::ostream &out) {
  PlanJson(record, out).write();
  out << '\n';
}

}  // namespace corvane::plan
