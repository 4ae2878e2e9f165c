#include "plan/pattern_pool.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvane::plan {

namespace {

// What a pattern cuts on which cutter, in words that hold across files.
using Recipe = std::pair<Index, std::map<std::string, double>>;

std::map<std::string, double> rollsOf(const Network &network, const Pattern &pattern) {
  std::map<std::string, double> rolls;
  for (const Yield &yield : pattern.yields) {
    if (yield.rolls > 0.0) {
      rolls[network.commodities[yield.commodity].name] += yield.rolls;
    }
  }
  return rolls;
}

class Pool {
 public:
  Pool(Network &network, PlanProblem &problem, const Network &otherNetwork,
       const PlanProblem &other)
      : network_(network), problem_(problem), otherNetwork_(otherNetwork), other_(other) {}

  PoolReport add() {
    matchCutters();
    for (const Pattern &pattern : problem_.patterns) {
      known_.insert({pattern.cutter, rollsOf(network_, pattern)});
    }
    for (Index store = 0; store < problem_.stores.size(); ++store) {
      stores_[problem_.stores[store].name] = store;
    }
    for (const Pattern &pattern : other_.patterns) {
      if (pattern.usable()) {
        offer(pattern);
      }
    }
    findReach(problem_);
    return report_;
  }

 private:
  static std::string cutterKey(const PlanProblem &problem, const Cutter &cutter) {
    return cutter.name + '\n' + problem.machines[cutter.machine].name;
  }

  void matchCutters() {
    std::map<std::string, Index> cutters;
    for (Index cutter = 0; cutter < problem_.cutters.size(); ++cutter) {
      if (problem_.cutters[cutter].samplePattern != kNone) {
        cutters[cutterKey(problem_, problem_.cutters[cutter])] = cutter;
      }
    }
    bool any = false;
    for (const Cutter &cutter : other_.cutters) {
      const auto found = cutters.find(cutterKey(other_, cutter));
      const bool same = found != cutters.end() &&
                        problem_.cutters[found->second].deckleWidth == cutter.deckleWidth;
      match_.push_back(same ? found->second : kNone);
      any = any || same;
    }
    if (!any) {
      throw network::Refused(0, "a pooled run is of another mill: none of its cutters is here");
    }
  }

  void offer(const Pattern &pattern) {
    const Index cutter = match_[pattern.cutter];
    std::optional<NewPattern> wanted = cutter == kNone ? std::nullopt : translate(pattern, cutter);
    if (!wanted) {
      ++report_.foreign;
    } else if (!known_.insert({cutter, rollsOf(otherNetwork_, pattern)}).second) {
      ++report_.known;
    } else {
      addPattern(network_, problem_, *wanted);
      ++report_.added;
    }
  }

  // Nothing where one of its stores is not here.
  std::optional<NewPattern> translate(const Pattern &pattern, Index cutter) const {
    NewPattern wanted;
    wanted.cutter = cutter;
    wanted.trim = pattern.trim;
    for (const Yield &yield : pattern.yields) {
      if (yield.rolls == 0.0) {
        continue;
      }
      const auto store = stores_.find(other_.stores[yield.stores.front()].name);
      if (store == stores_.end() ||
          network_.commodities[problem_.stores[store->second].commodity].name !=
              otherNetwork_.commodities[yield.commodity].name) {
        return std::nullopt;
      }
      wanted.rolls.push_back({store->second, yield.rolls});
    }
    return wanted;
  }

  Network &network_;
  PlanProblem &problem_;
  const Network &otherNetwork_;
  const PlanProblem &other_;
  std::vector<Index> match_;  // by cutter of the other run
  std::map<std::string, Index> stores_;
  std::set<Recipe> known_;
  PoolReport report_;
};

}  // namespace

PoolReport addPool(Network &network, PlanProblem &problem, const Network &otherNetwork,
                   const PlanProblem &other) {
  return Pool(network, problem, otherNetwork, other).add();
}

}  // namespace corvane::plan
