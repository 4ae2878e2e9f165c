#pragma once

#include <QtGlobal>

namespace corvane {

// The linear congruential generator of pattern generation (D. E. Knuth, "The Art of Computer
// Programming", vol. 2, section 3.2.1), with a range of indexes to draw from. One run draws one
// sequence. All arithmetic is unsigned, 32 bits wide, and wraps.
class PatternRandom {
 public:
  static constexpr quint32 kMultiplier = 205;
  static constexpr quint32 kIncrement = 29573;
  static constexpr quint32 kModulus = 139968;

  void seed(quint32 state) { state_ = state; }
  void setRange(quint32 low, quint32 high) {
    low_ = low;
    high_ = high;
  }

  // An index from low to high, both included.
  quint32 draw() {
    state_ = (kMultiplier * state_ + kIncrement) % kModulus;
    return low_ + (high_ - low_ + 1U) * state_ / kModulus;
  }

  quint32 state() const { return state_; }
  quint32 low() const { return low_; }
  quint32 high() const { return high_; }

 private:
  quint32 state_ = 1;
  quint32 low_ = 0;
  quint32 high_ = 100;
};

}  // namespace corvane
