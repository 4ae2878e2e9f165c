#include "phase_clock.h"

#include <numeric>

#include "resources.h"

namespace bench {

PhaseClock &PhaseClock::instance() {
  static PhaseClock clock;
  return clock;
}

Step::Step(Phase phase)
    : left_(PhaseClock::instance().switchTo(phase)),
      before_(PhaseClock::instance().times()),
      cpuBegin_(cpuSeconds()) {}

Step::~Step() {
  PhaseClock &clock = PhaseClock::instance();
  clock.switchTo(left_);
  const double cpu = cpuSeconds() - cpuBegin_;
  const double elapsed = std::accumulate(clock.times_.begin(), clock.times_.end(), 0.0) -
                         std::accumulate(before_.begin(), before_.end(), 0.0);
  for (std::size_t phase = 0; phase < kPhases && elapsed > 0; ++phase) {
    clock.times_[phase] = before_[phase] + (clock.times_[phase] - before_[phase]) * cpu / elapsed;
  }
}

}  // namespace bench
