#include "plan/plan_screen.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>

#include "core/numbers.h"
#include "plan/figures.h"
#include "plan/unmet_reasons.h"

namespace corvane::plan {

namespace {

constexpr std::size_t kMostMachines = 5;
constexpr std::size_t kMostUnmet = 5;
constexpr int kMostWarnings = 3;

class Screen {
 public:
  Screen(const PlanRecord &record, std::ostream &out)
      : record_(record), problem_(record.problem), out_(out) {}

  void print(const std::string &file) {
    out_ << "Plan of " << file << ": " << problem_.periodCount()
         << (problem_.periodCount() == 1 ? " period" : " periods") << '\n';
    printAmounts();
    printCost();
    printMachines();
    printUnmet();
    printAdvice();
  }

 private:
  void line(const std::string &head, const std::string &text) {
    out_ << "  " << head << std::string(head.size() < 11 ? 11 - head.size() : 1, ' ') << text
         << '\n';
  }

  void printAmounts() {
    const Totals &totals = record_.totals;
    line("Delivered", count(totals.deliveredRolls) + " of " + count(totals.orderedRolls) +
                          " rolls (" + percent(totals.deliveredRolls, totals.orderedRolls) + ")");
    line("Paper", count(totals.reels) + " reels, " + grouped(totals.deckleInches) +
                      " inches; trim " + fixed(totals.trimPercent(), 2) + " %" +
                      (totals.surplusRolls > 0.0
                           ? " with " + count(totals.surplusRolls) + " rolls that nobody ordered"
                           : ""));
  }

  void printCost() {
    const CostByKind &cost = record_.totals.cost;
    std::string text = grouped(cost.total()) + ":";
    const std::pair<const char *, double> kinds[] = {{"freight", cost.freight},
                                                     {"waste", cost.waste},
                                                     {"feed", cost.feed},
                                                     {"machine time", cost.machineTime},
                                                     {"surplus", cost.surplus}};
    const char *separator = " ";
    for (const auto &[name, money] : kinds) {
      if (money != 0.0) {
        text += separator + std::string(name) + " " + grouped(money);
        separator = ", ";
      }
    }
    line("Cost", text);
    if (record_.solver.gapToLp) {
      line("", "whole reels cost " + fixed(100.0 * *record_.solver.gapToLp, 2) +
                   " % more than the bound, " + grouped(record_.solver.lpCost));
    }
  }

  void printMachines() {
    struct Load {
      double share;
      std::size_t machine;
      std::size_t period;
    };
    const std::vector<double> used = usedDays(problem_, record_.plan);
    std::vector<Load> loads;
    for (std::size_t machine = 0; machine < problem_.machines.size(); ++machine) {
      for (std::size_t period = 0; period < problem_.periodCount(); ++period) {
        const double days = problem_.machines[machine].days[period];
        if (days > 0.0) {
          // Full ones are equally full: the solver's last digits give no order.
          const double share = used[machine * problem_.periodCount() + period] / days;
          loads.push_back({std::round(share * 1e6) / 1e6, machine, period});
        }
      }
    }
    std::stable_sort(loads.begin(), loads.end(),
                     [](const Load &a, const Load &b) { return a.share > b.share; });
    std::string text;
    for (std::size_t at = 0; at < std::min(loads.size(), kMostMachines); ++at) {
      text += (text.empty() ? "" : ", ") + problem_.machines[loads[at].machine].name + " " +
              fixed(100.0 * loads[at].share, 0) + " % in " + problem_.periods[loads[at].period];
    }
    if (!text.empty()) {
      line("Fullest", text);
    }
  }

  void printUnmet() {
    struct Missing {
      double rolls;
      std::size_t order;
      std::size_t period;
    };
    std::map<Reason, std::vector<Missing>> missing;
    for (std::size_t order = 0; order < problem_.orders.size(); ++order) {
      for (std::size_t period = 0; period < problem_.periodCount(); ++period) {
        const std::size_t at = order * problem_.periodCount() + period;
        if (record_.plan.unmet[at] > 0.0) {
          missing[record_.plan.reasons[at]].push_back({record_.plan.unmet[at], order, period});
        }
      }
    }
    for (auto &[reason, list] : missing) {
      double rolls = 0.0;
      for (const Missing &one : list) {
        rolls += one.rolls;
      }
      line("Unmet", count(rolls) + " rolls: " + std::string(reasonText(reason)));
      std::stable_sort(list.begin(), list.end(), [](const Missing &a, const Missing &b) {
        return std::round(a.rolls * 1e6) > std::round(b.rolls * 1e6);
      });
      for (std::size_t at = 0; at < std::min(list.size(), kMostUnmet); ++at) {
        line("", count(list[at].rolls) + " of " + problem_.orders[list[at].order].name + " in " +
                     problem_.periods[list[at].period] +
                     fullMachines(reason, list[at].order, list[at].period));
      }
      if (list.size() > kMostUnmet) {
        line("", "and " + std::to_string(list.size() - kMostUnmet) + " more, see orders.csv");
      }
    }
  }

  void printAdvice() {
    std::string head = "Would pay";
    for (const Advice &advice : record_.advice) {
      line(head, advice.text);
      head.clear();
    }
  }

  std::string fullMachines(Reason reason, std::size_t order, std::size_t period) const {
    if (reason != Reason::kMachineTime) {
      return "";
    }
    std::string text;
    for (const MachineTime &time : possibleMakers(problem_, problem_.orders[order], period)) {
      text += (text.empty() ? ": " : ", ") + problem_.machines[time.machine].name + " in " +
              problem_.periods[time.period];
    }
    return text;
  }

  const PlanRecord &record_;
  const PlanProblem &problem_;
  std::ostream &out_;
};

}  // namespace

void printPlan(const PlanRecord &record, const std::string &file, std::ostream &out) {
  Screen(record, out).print(file);
}

void printWarnings(const PlanRecord &record, std::ostream &err) {
  std::map<std::string, int> told;
  for (const network::Warning &warning : record.warnings) {
    if (++told[warning.kind] <= kMostWarnings) {
      err << "Warning: ";
      if (warning.line != 0) {
        err << "line " << warning.line << ": ";
      }
      err << warning.text << ".\n";
    }
  }
  for (const auto &[kind, number] : told) {
    if (number > kMostWarnings) {
      err << "Warning: " << number - kMostWarnings << " more of the kind " << kind
          << ", see plan.json.\n";
    }
  }
}

}  // namespace corvane::plan
