#pragma once

#include <vector>

#include "network/network.h"
#include "plan/plan_problem.h"

namespace corvane::plan {

// A store that a cutter may fill, and the width of the rolls that go there, inches.
struct MenuEntry {
  Index store = kNone;
  double width = 0;
};

// What a cutter may slit: its deckle, and the stores for its rolls, widest first. Widths are those
// of the import file, which has six digits of them, unless somebody knows better.
struct CutterMenu {
  Index cutter = kNone;
  double deckle = 0;  // inches
  std::vector<MenuEntry> entries;
};

// The menus of the cutters that can run and whose costs are known, in their order. A cutter's
// stores are those that its patterns fill, and the others of the same sets: a width that no pattern
// of the cutter has yet is on the menu too.
std::vector<CutterMenu> cutterMenus(const Network &network, const PlanProblem &problem);

}  // namespace corvane::plan
