#include "app/process_objects.h"

#include "core/fatal.h"
#include "generation/pattern.h"

namespace corvane {

namespace {

// Stands first: what is constructed after it may run out of memory.
struct MemoryGuard {
  MemoryGuard() noexcept { endRunOutOfMemoryOnTerminate(); }
} memoryGuard;

}  // namespace

PatternRandom patternRandom;
PlanningComparators comparators;
RunRecord runRecord(comparators);
std::ofstream logStream;

namespace {

// The registry of pools with its first pool.
struct PoolRegistry {
  PoolRegistry() { createPatternPool(); }
} poolRegistry;

}  // namespace

}  // namespace corvane
