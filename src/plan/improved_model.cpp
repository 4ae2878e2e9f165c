#include "plan/improved_model.h"

#include <memory>
#include <sstream>

#include "app/run_settings.h"
#include "export/model.h"
#include "generation/pattern_set.h"

namespace corvane::plan {

namespace {

PatternCompPattern &setOf(PatternSets &sets, const QString &grade, double deckle) {
  for (PatternCompPattern *set : sets.ofGrade(grade)) {
    if (set->deckleWidth == deckle) {
      return *set;
    }
  }
  return sets.add(grade, deckle);
}

void add(PatternSets &sets, const SlitPattern &slit) {
  auto pattern = std::make_unique<corvane::Pattern>(slit.deckle);
  for (const double width : slit.widths) {
    pattern->widths.append(width);
    pattern->trim -= width;
  }
  PatternCompPattern &set = setOf(sets, slit.grade, slit.deckle);
  if (set.patterns->insert(pattern.get()) == skipList<corvane::Pattern>::kStored) {
    (void)pattern.release();
  }
}

}  // namespace

void writeImprovedModel(const MillInputs &inputs, const std::vector<SlitPattern> &patterns,
                        std::ostream &out) {
  PatternSets sets;
  for (const SlitPattern &pattern : patterns) {
    add(sets, pattern);
  }
  std::ostringstream log;
  writeModel(inputs.planning(), sets, exportSettings(inputs.parameters()), out, log);
}

}  // namespace corvane::plan
