#include "plan/empty_stores.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "plan/network_pricing.h"
#include "plan/pattern_pricing.h"

namespace corvane::plan {

namespace {

// As many rolls of one width as fit.
NewPattern plainPattern(const CutterMenu &menu, const MenuEntry &entry, int limit) {
  const double room = std::floor((menu.deckle + kFitTolerance) / entry.width);
  const double count = std::min(room, static_cast<double>(limit));
  return {menu.cutter, {{entry.store, count}}, writtenTrim(menu.deckle - count * entry.width)};
}

}  // namespace

int fillEmptyStores(Network &network, PlanProblem &problem, const std::vector<CutterMenu> &menus,
                    int limit) {
  const std::size_t before = problem.patterns.size();
  for (const CutterMenu &menu : menus) {
    for (const MenuEntry &entry : menu.entries) {
      if (problem.stores[entry.store].patterns.empty() &&
          entry.width <= menu.deckle + kFitTolerance) {
        addPattern(network, problem, plainPattern(menu, entry, limit));
      }
    }
  }
  const auto added = static_cast<int>(problem.patterns.size() - before);
  if (added > 0) {
    const std::vector<Pattern> patterns = std::move(problem.patterns);
    problem = makeProblem(network, problem.options);
    for (std::size_t i = 0; i < patterns.size(); ++i) {
      problem.patterns[i].offered = patterns[i].offered;
    }
  }
  return added;
}

}  // namespace corvane::plan
