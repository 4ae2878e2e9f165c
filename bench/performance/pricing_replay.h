#pragma once

#include <QtGlobal>
#include <vector>

#include "generation/generation_context.h"

namespace corvane::bench {

// Seconds of processor time.
struct PricingTimes {
  double program;
  double literal;
};

// The pricing of a run again, from the dual values that its masters had: the same lists, the same
// draws and the same picks, by the program and literally.
class PricingReplay {
 public:
  // The run was that of the mill in the working directory, which has one grade, of which every
  // width is ordered in every period. `duals` outlives this.
  explicit PricingReplay(const std::vector<std::vector<double>> &duals);

  // Throws std::runtime_error where the two do not end with the same draw.
  PricingTimes run() const;

 private:
  struct Timed {
    double seconds;
    quint32 lastDraw;
  };

  Timed priceAsProgram() const;
  Timed priceLiterally() const;

  const std::vector<std::vector<double>> &duals_;
  GenerationSettings settings_;
  std::vector<double> widths_;
  std::vector<double> deckleWidths_;
};

}  // namespace corvane::bench
