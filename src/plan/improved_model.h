#pragma once

#include <QString>
#include <iosfwd>
#include <vector>

#include "plan/mill_inputs.h"

namespace corvane::plan {

// One way of slitting a deckle width of a grade, which every cutter of the two may run.
struct SlitPattern {
  QString grade;
  double deckle = 0;           // inches
  std::vector<double> widths;  // one entry a roll, widest first, inches
};

// Writes the import file of the mill with these patterns, by the writers of a run: the same file as
// the run's but for its patterns, which stand in the order of a run's. Equal patterns come once.
void writeImprovedModel(const MillInputs &inputs, const std::vector<SlitPattern> &patterns,
                        std::ostream &out);

}  // namespace corvane::plan
