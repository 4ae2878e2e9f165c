#include "plan/cutter_menu.h"

#include <algorithm>
#include <map>
#include <set>

namespace corvane::plan {

namespace {

using StoresOfSets = std::map<Index, std::vector<Index>>;

StoresOfSets storesOfSets(const Network &network, const PlanProblem &problem) {
  StoresOfSets stores;
  for (Index store = 0; store < problem.stores.size(); ++store) {
    const Index set = network.nodes[problem.stores[store].node].set;
    if (set != kNone) {
      stores[set].push_back(store);
    }
  }
  return stores;
}

// The stores that the patterns of each cutter fill.
std::vector<std::set<Index>> filledStores(const PlanProblem &problem) {
  std::vector<std::set<Index>> filled(problem.cutters.size());
  for (const Pattern &pattern : problem.patterns) {
    for (const Yield &yield : pattern.yields) {
      filled[pattern.cutter].insert(yield.stores.begin(), yield.stores.end());
    }
  }
  return filled;
}

void addSets(std::set<Index> &stores, const Network &network, const PlanProblem &problem,
             const StoresOfSets &sets) {
  std::set<Index> added;
  for (const Index store : stores) {
    const auto set = sets.find(network.nodes[problem.stores[store].node].set);
    if (set != sets.end()) {
      added.insert(set->second.begin(), set->second.end());
    }
  }
  stores.merge(added);
}

CutterMenu menuOf(Index cutter, const std::set<Index> &stores, const PlanProblem &problem) {
  CutterMenu menu{cutter, problem.cutters[cutter].deckleWidth, {}};
  for (const Index store : stores) {
    menu.entries.push_back({store, problem.stores[store].width});
  }
  std::stable_sort(menu.entries.begin(), menu.entries.end(),
                   [](const MenuEntry &a, const MenuEntry &b) { return a.width > b.width; });
  return menu;
}

}  // namespace

std::vector<CutterMenu> cutterMenus(const Network &network, const PlanProblem &problem) {
  const StoresOfSets sets = storesOfSets(network, problem);
  std::vector<std::set<Index>> stores = filledStores(problem);
  std::vector<CutterMenu> menus;
  for (Index cutter = 0; cutter < problem.cutters.size(); ++cutter) {
    if (problem.cutters[cutter].capacity > 0 && problem.cutters[cutter].samplePattern != kNone) {
      addSets(stores[cutter], network, problem, sets);
      menus.push_back(menuOf(cutter, stores[cutter], problem));
    }
  }
  return menus;
}

}  // namespace corvane::plan
