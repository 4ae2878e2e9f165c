#include "phase_clock.h"

#include <numeric>

#include "resources.h"
#include "samples.h"

namespace corvane::bench {

PhaseClock &PhaseClock::instance() {
  static PhaseClock clock;
  return clock;
}

double PhaseClock::costOfReading() {
  constexpr int kReadings = 1001;
  Samples costs;
  Clock::time_point last = Clock::now();
  for (int reading = 0; reading < kReadings; ++reading) {
    const Clock::time_point now = Clock::now();
    costs.add(std::chrono::duration<double>(now - last).count());
    last = now;
  }
  return costs.median();
}

Step::Step(Phase phase)
    : left_(PhaseClock::instance().switchTo(phase)),
      before_(PhaseClock::instance().times()),
      readingsBefore_(PhaseClock::instance().readings_),
      cpuBegin_(cpuSeconds()) {}

Step::~Step() {
  PhaseClock &clock = PhaseClock::instance();
  clock.switchTo(left_);
  const double readings = static_cast<double>(clock.readings_ - readingsBefore_);
  const double cpu = cpuSeconds() - cpuBegin_ - readings * clock.costOfReading_;
  const double elapsed = std::accumulate(clock.times_.begin(), clock.times_.end(), 0.0) -
                         std::accumulate(before_.begin(), before_.end(), 0.0);
  for (std::size_t phase = 0; phase < kPhases && elapsed > 0; ++phase) {
    clock.times_[phase] = before_[phase] + (clock.times_[phase] - before_[phase]) * cpu / elapsed;
  }
}

}  // namespace corvane::bench
