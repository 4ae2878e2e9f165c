#include "core/progress.h"

#include <iostream>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace corvane {

namespace {

constexpr auto kInterval = std::chrono::milliseconds(250);

bool standardErrorIsTerminal() {
#if defined(_WIN32)
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

ProgressLine::ProgressLine()
    : enabled_(standardErrorIsTerminal()), start_(Clock::now()), due_(start_ + kInterval) {}

void ProgressLine::show(const std::function<std::string()> &text) {
  if (!enabled_) {
    return;
  }
  const Clock::time_point now = Clock::now();
  if (now < due_) {
    return;
  }
  due_ = now + kInterval;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - start_).count();
  std::string line = text() + ", " + std::to_string(seconds) + " s";
  const std::size_t length = line.size();
  if (length < shownLength_) {
    line.append(shownLength_ - length, ' ');
  }
  shownLength_ = length;
  std::cerr << '\r' << line << std::flush;
}

void ProgressLine::finish() {
  if (shownLength_ > 0) {
    std::cerr << '\r' << std::string(shownLength_, ' ') << '\r' << std::flush;
    shownLength_ = 0;
  }
}

}  // namespace corvane
