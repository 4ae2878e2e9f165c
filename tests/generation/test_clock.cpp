#include "generation/test_clock.h"

namespace {

bool clockIsSet = false;
std::time_t shown = 0;
std::time_t shownStep = 0;

}  // namespace

// The names are those that the linker gives to the two sides of a wrapped function.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
std::time_t __real_time(std::time_t *result);

std::time_t __wrap_time(std::time_t *result);

std::time_t __wrap_time(std::time_t *result) {
  if (!clockIsSet) {
    return __real_time(result);
  }
  const std::time_t now = shown;
  shown += shownStep;
  return now;
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace corvane::support {

TestClock::TestClock(std::time_t start, std::time_t step) {
  clockIsSet = true;
  shown = start;
  shownStep = step;
}

TestClock::~TestClock() {
  clockIsSet = false;
}

}  // namespace corvane::support
