#pragma once

#include <QString>
#include <string>
#include <unordered_map>
#include <vector>

#include "plan/cutter_menu.h"
#include "plan/improved_model.h"
#include "plan/mill_inputs.h"

namespace corvane::plan {

// What the nodes of an import file were made of, by their names: the file has six digits of a
// width, the inputs of the mill have all of them.
class MillNames {
 public:
  explicit MillNames(const MillInputs &inputs);

  // Puts the mill's own deckles and widths into the menus. Throws network::Refused when a cutter or
  // store is none of the mill's: the inputs have changed since the file was written.
  void makeExact(std::vector<CutterMenu> &menus, const PlanProblem &problem) const;

  // The patterns of the problem that `isKept` names by their place, in the mill's own widths.
  // Throws like makeExact().
  std::vector<SlitPattern> slitPatterns(const PlanProblem &problem,
                                        const std::vector<bool> &isKept) const;

 private:
  struct Deckle {
    QString grade;
    double width;
  };

  const Deckle &deckleOf(const Cutter &cutter) const;
  double widthOf(const Store &store) const;

  std::unordered_map<std::string, Deckle> deckles_;
  std::unordered_map<std::string, double> widths_;
};

}  // namespace corvane::plan
