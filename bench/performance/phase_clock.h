#pragma once

#include <array>
#include <chrono>
#include <cstddef>

namespace corvane::bench {

// What a run spends its time on.
enum class Phase {
  kOutside,
  kReading,
  kMasterSolver,
  kPricing,  // column generation: price lists, new patterns and their insertion
  kGenerationRest,
  kFinalSolver,
  kSolutions,  // final selection: handing them out
  kFinalRest,
  kReport,
  kPrune,
  kExport,
};
inline constexpr std::size_t kPhases = 11;

using PhaseTimes = std::array<double, kPhases>;  // seconds

// One clock that runs through all phases; at any time exactly one is charged. It takes the elapsed
// time, since reading the processor's own time costs more than much of what is measured here; each
// step scales what was charged in it. What reading the clock costs is taken off.
class PhaseClock {
 public:
  static PhaseClock &instance();

  // Charges the time since the last switch, and goes on in another phase. Returns the one left.
  Phase switchTo(Phase phase) {
    const Clock::time_point now = Clock::now();
    times_[static_cast<std::size_t>(current_)] +=
        std::chrono::duration<double>(now - since_).count() - costOfReading_;
    ++readings_;
    since_ = now;
    const Phase left = current_;
    current_ = phase;
    return left;
  }

  Phase current() const { return current_; }
  const PhaseTimes &times() const { return times_; }
  double operator[](Phase phase) const { return times_[static_cast<std::size_t>(phase)]; }

 private:
  friend class Step;
  using Clock = std::chrono::steady_clock;

  static double costOfReading();

  double costOfReading_ = costOfReading();  // seconds
  long long readings_ = 0;
  PhaseTimes times_{};
  Phase current_ = Phase::kOutside;
  Clock::time_point since_ = Clock::now();
};

// Charges a phase for as long as it lives.
class InPhase {
 public:
  explicit InPhase(Phase phase) : left_(PhaseClock::instance().switchTo(phase)) {}
  InPhase(const InPhase &) = delete;
  InPhase &operator=(const InPhase &) = delete;
  ~InPhase() { PhaseClock::instance().switchTo(left_); }

 private:
  Phase left_;
};

// A step of the run, which starts in a phase. When it ends, what was charged in it is scaled to the
// processor time that it took, so that other programs on the machine do not count.
class Step {
 public:
  explicit Step(Phase phase);
  Step(const Step &) = delete;
  Step &operator=(const Step &) = delete;
  ~Step();

 private:
  Phase left_;
  PhaseTimes before_;
  long long readingsBefore_;
  double cpuBegin_;
};

}  // namespace corvane::bench
