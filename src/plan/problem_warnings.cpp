#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "core/numbers.h"
#include "plan/problem_maker.h"

namespace corvane::plan {

namespace {

class RoleWarnings {
 public:
  RoleWarnings(const Network &network, PlanProblem &problem)
      : network_(network), problem_(problem) {}

  void add() {
    warnOfCutters();
    warnOfPatterns();
    warnOfFreight();
    warnOfDelays();
  }

 private:
  void warn(Index line, const char *kind, std::string text) {
    problem_.warnings.push_back({line, kind, std::move(text)});
  }

  Index lineOf(Index node) const { return network_.nodes[node].line; }

  void warnOfCutters() {
    for (const Cutter &cutter : problem_.cutters) {
      if (cutter.capacity == 0.0) {
        warn(lineOf(cutter.node), "no-capacity",
             "the cutter " + network::inQuotes(cutter.name) +
                 " has the capacity 0 and makes nothing");
      }
      if (std::any_of(cutter.wasteCost.begin(), cutter.wasteCost.end(),
                      [](double cost) { return cost < 0.0; })) {
        warn(lineOf(cutter.node), "negative-cost",
             "waste of the cutter " + network::inQuotes(cutter.name) +
                 " costs less than 0: trim is a gain");
      }
    }
  }

  void warnOfPatterns() {
    std::set<Index> told;
    for (const Pattern &pattern : problem_.patterns) {
      if (pattern.usable() || !told.insert(pattern.node).second) {
        continue;
      }
      if (!pattern.possible) {
        warn(lineOf(pattern.node), "pattern-too-wide",
             "the pattern " + network::inQuotes(pattern.name) + " cuts " +
                 general(pattern.rollInches) + " inches out of " +
                 general(problem_.cutters[pattern.cutter].deckleWidth) + " and is left out");
      } else {
        warn(lineOf(pattern.node), "pattern-stopped",
             "the pattern " + network::inQuotes(pattern.name) +
                 " yields something that has nowhere to go and is left out");
      }
    }
  }

  void warnOfFreight() {
    const auto negative = [](const Route &route) {
      return std::any_of(route.cost.begin(), route.cost.end(),
                         [](double cost) { return cost < 0.0; });
    };
    const auto first = std::find_if(problem_.routes.begin(), problem_.routes.end(), negative);
    if (first != problem_.routes.end()) {
      const auto count = std::count_if(first, problem_.routes.end(), negative);
      warn(network_.arcs[first->arc].line, "negative-cost",
           "freight of " + std::to_string(count) + (count == 1 ? " route" : " routes") +
               " costs less than 0, here to " +
               network::inQuotes(problem_.orders[first->order].name));
    }
  }

  void warnOfDelays() {
    std::set<Index> rounded;
    Longest longest;
    for (const Route &route : problem_.routes) {
      if (route.delayNode == kNone) {
        continue;
      }
      for (const network::Datum &datum : network_.nodes[route.delayNode].delay) {
        if (datum.value != std::ceil(datum.value) && rounded.insert(route.delayNode).second) {
          warn(lineOf(route.delayNode), "delay-rounded",
               "the delay of " + network::inQuotes(network_.nodes[route.delayNode].name) + " is " +
                   general(datum.value) + " periods; it counts as " +
                   general(std::ceil(datum.value)));
        }
        auto &entry = longest[route.mode];
        const double periods =
            std::min(std::ceil(datum.value), static_cast<double>(problem_.periodCount()));
        if (periods > entry.first) {
          entry = {periods, lineOf(route.delayNode)};
        }
      }
    }
    warnOfLateDepartures(longest);
  }

  // By mode its longest delay in periods, and the line of that.
  using Longest = std::map<std::string, std::pair<double, Index>>;

  void warnOfLateDepartures(const Longest &longest) {
    for (const auto &[mode, entry] : longest) {
      if (entry.first > 0.0) {
        warn(entry.second, "late-departures",
             "nothing leaves by " + network::inQuotes(mode) + " in the last " +
                 general(entry.first) + (entry.first == 1.0 ? " period" : " periods") +
                 ", as it would arrive behind the last one");
      }
    }
  }

  const Network &network_;
  PlanProblem &problem_;
};

}  // namespace

std::string_view reasonName(Reason reason) {
  switch (reason) {
    case Reason::kMet:
      return "";
    case Reason::kNoRoute:
      return "no-freight-rate";
    case Reason::kNoPattern:
      return "no-pattern";
    case Reason::kNoCapacity:
      return "no-capacity";
    case Reason::kTooEarly:
      return "too-early";
    case Reason::kMachineTime:
      return "machine-time";
    case Reason::kWholeReels:
      return "whole-reels";
  }
  return "";
}

std::string_view reasonText(Reason reason) {
  switch (reason) {
    case Reason::kMet:
      return "";
    case Reason::kNoRoute:
      return "no freight rate leads to the customer";
    case Reason::kNoPattern:
      return "no pattern cuts this width";
    case Reason::kNoCapacity:
      return "the cutters that could make it have the capacity 0";
    case Reason::kTooEarly:
      return "every shipment would have to leave before the first period";
    case Reason::kMachineTime:
      return "the machines that could make it in time are full";
    case Reason::kWholeReels:
      return "no further whole reel fits, or the search ended";
  }
  return "";
}

std::vector<network::Warning> reachWarnings(const Network &network, const PlanProblem &problem) {
  std::vector<network::Warning> warnings;
  for (const Order &order : problem.orders) {
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      if (order.reach[period] == Reason::kMet) {
        continue;
      }
      warnings.push_back(
          {network.nodes[order.node].amount[period].line, "out-of-reach",
           general(order.demand[period]) + " rolls of " + network::inQuotes(order.name) +
               " in period " + problem.periods[period] +
               " can never be delivered: " + std::string(reasonText(order.reach[period]))});
    }
  }
  return warnings;
}

void warnOfRoles(const Network &network, PlanProblem &problem) {
  RoleWarnings(network, problem).add();
}

}  // namespace corvane::plan
