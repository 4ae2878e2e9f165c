#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace corvane {

// One line on standard error that tells where a long run is, rewritten a few times a second. Silent
// unless standard error is a terminal.
class ProgressLine {
 public:
  ProgressLine();

  // The text is asked for only when the line is due.
  void show(const std::function<std::string()> &text);
  // Clears the line.
  void finish();

 private:
  using Clock = std::chrono::steady_clock;

  bool enabled_;
  Clock::time_point start_;
  Clock::time_point due_;
  std::size_t shownLength_ = 0;
};

}  // namespace corvane
