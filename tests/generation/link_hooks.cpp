#include "generation/link_hooks.h"

#include <cstddef>

namespace {

int requestsUntilRefusal = 0;

bool clockIsSet = false;
std::time_t shown = 0;
std::time_t shownStep = 0;

bool refuses() {
  return requestsUntilRefusal > 0 && --requestsUntilRefusal == 0;
}

}  // namespace

// The names are those that the linker gives to the two sides of a wrapped function.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void *__real_malloc(std::size_t bytes);
void *__real_calloc(std::size_t count, std::size_t bytes);
void *__real_realloc(void *block, std::size_t bytes);
std::time_t __real_time(std::time_t *result);

void *__wrap_malloc(std::size_t bytes);
void *__wrap_calloc(std::size_t count, std::size_t bytes);
void *__wrap_realloc(void *block, std::size_t bytes);
std::time_t __wrap_time(std::time_t *result);

// A compiler may turn the realloc of nothing into a malloc, and that into a calloc where zeros
// follow.
void *__wrap_malloc(std::size_t bytes) {
  return refuses() ? nullptr : __real_malloc(bytes);
}

void *__wrap_calloc(std::size_t count, std::size_t bytes) {
  return refuses() ? nullptr : __real_calloc(count, bytes);
}

void *__wrap_realloc(void *block, std::size_t bytes) {
  return refuses() ? nullptr : __real_realloc(block, bytes);
}

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

RefusedArray::RefusedArray(int n) {
  requestsUntilRefusal = n;
}

RefusedArray::~RefusedArray() {
  requestsUntilRefusal = 0;
}

TestClock::TestClock(std::time_t start, std::time_t step) {
  clockIsSet = true;
  shown = start;
  shownStep = step;
}

TestClock::~TestClock() {
  clockIsSet = false;
}

}  // namespace corvane::support
