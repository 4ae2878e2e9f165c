// The program with allocations that fail from the very start, before main() too:
// CORVANE_FAIL_ALLOCATION is the number of the first one that fails; with a "+" behind it all later
// ones fail as well. CORVANE_COUNT_ALLOCATIONS, when set, prints their number on standard error.

#include <cstdio>
#include <cstdlib>

#include "app/planner.h"
#include "failing_memory.h"

using namespace corvane;

namespace {

// Runs before any object of the program is constructed.
__attribute__((constructor(101))) void begin() {
  const char *chosen = std::getenv("CORVANE_FAIL_ALLOCATION");
  char *rest = nullptr;
  const long n = chosen == nullptr ? 0 : std::strtol(chosen, &rest, 10);
  corvane::faults::failAllocation(n, rest != nullptr && *rest == '+');
}

}  // namespace

int main() {
  const long beforeMain = corvane::faults::countedAllocations();
  const int status = runProcess();
  const long all = corvane::faults::countedAllocations();
  corvane::faults::failAllocation(0, false);
  if (std::getenv("CORVANE_COUNT_ALLOCATIONS") != nullptr) {
    std::fprintf(stderr, "%ld %ld\n", beforeMain, all);
  }
  return status;
}
