#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace corvane {

// One line on standard error that tells where a long run is, rewritten a few times a second and
// never wider than the terminal. Silent unless standard error is a terminal.
class ProgressLine {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  explicit ProgressLine(Clock clock = std::chrono::steady_clock::now);
  ProgressLine(const ProgressLine &) = delete;
  ProgressLine &operator=(const ProgressLine &) = delete;
  ~ProgressLine() { finish(); }

  // The text (UTF-8) is asked for only when the line is due.
  void show(const std::function<std::string()> &text);
  // Clears the line.
  void finish() noexcept;

 private:
  bool enabled_;
  Clock clock_;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point due_;
};

// Clears the line that is shown, if any, without asking for memory. Whoever says something on
// standard output or standard error while a ProgressLine may be shown calls this first; tell() and
// the ends of a run do.
void clearProgress() noexcept;

}  // namespace corvane
