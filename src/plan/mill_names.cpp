#include "plan/mill_names.h"

#include "app/run_settings.h"
#include "core/text.h"
#include "export/model_data.h"
#include "export/names.h"

namespace corvane::plan {

namespace {

// The name of a node as the network has it, without quotes.
std::string nodeName(const QString &quotedName) {
  return utf8(quotedName.mid(1, quotedName.size() - 2));
}

[[noreturn]] void refuse(const std::string &name) {
  throw network::Refused(0, "the mill's input files have no \"" + name +
                                "\": they are not those that the import file was made of");
}

template <typename Value>
const Value &find(const std::unordered_map<std::string, Value> &values, const std::string &name) {
  const auto value = values.find(name);
  if (value == values.end()) {
    refuse(name);
  }
  return value->second;
}

}  // namespace

MillNames::MillNames(const MillInputs &inputs) {
  const PatternSets none;
  const ModelData data(inputs.planning(), none, exportSettings(inputs.parameters()));
  forEachPlannedCutter(data, [&](const corvane::Cutter &cutter) {
    deckles_.try_emplace(nodeName(cutterWidthName(cutter)), Deckle{cutter.grade, cutter.width});
    for (const double width : data.planning.demandWidthsOf(cutter.grade)) {
      widths_.try_emplace(nodeName(cutterValueName(cutter, width)), width);
    }
  });
}

const MillNames::Deckle &MillNames::deckleOf(const Cutter &cutter) const {
  return find(deckles_, cutter.name);
}

double MillNames::widthOf(const Store &store) const {
  return find(widths_, store.name);
}

void MillNames::makeExact(std::vector<CutterMenu> &menus, const PlanProblem &problem) const {
  for (CutterMenu &menu : menus) {
    menu.deckle = deckleOf(problem.cutters[menu.cutter]).width;
    for (MenuEntry &entry : menu.entries) {
      entry.width = widthOf(problem.stores[entry.store]);
    }
  }
}

std::vector<SlitPattern> MillNames::slitPatterns(const PlanProblem &problem,
                                                 const std::vector<bool> &isKept) const {
  std::vector<SlitPattern> slits;
  for (std::size_t i = 0; i < problem.patterns.size(); ++i) {
    if (!isKept[i]) {
      continue;
    }
    const Pattern &pattern = problem.patterns[i];
    const Deckle &deckle = deckleOf(problem.cutters[pattern.cutter]);
    SlitPattern slit{deckle.grade, deckle.width, {}};
    for (const Yield &yield : pattern.yields) {
      slit.widths.insert(slit.widths.end(), static_cast<std::size_t>(yield.rolls),
                         widthOf(problem.stores[yield.stores.front()]));
    }
    slits.push_back(std::move(slit));
  }
  return slits;
}

}  // namespace corvane::plan
