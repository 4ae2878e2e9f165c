#include "app/process_objects.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "core/zem_mem_mgr.h"
#include "core/zem_mem_mgr_factory.h"

namespace corvane {
namespace {

TEST(ProcessObjects, StandWithTheirFirstValuesBeforeTheRun) {
  EXPECT_EQ(patternRandom.state(), 1U);
  EXPECT_EQ(patternRandom.high(), 100U);
  EXPECT_EQ(runRecord.parameters.seed, -1);
  EXPECT_EQ(runRecord.planning.cutters.count(), 0);
  EXPECT_EQ(runRecord.patterns.totalPatterns, 0);
  EXPECT_EQ(&runRecord.planning.comparators, &comparators);
  EXPECT_FALSE(logStream.is_open());
}

// A request of the same geometry is answered with the pool that is there, under both names.
TEST(ProcessObjects, IncludeTheRegistryOfPoolsWithThePatternPool) {
  const ZemMemMgr *pool = ZemMemMgrFactory::instance().create(40, "test", 256);
  EXPECT_EQ(pool->name(), "Pattern:test");
  EXPECT_EQ(pool->blockSize(), 40U);
}

// Objects of one file are constructed in the order in which they are defined, so the file shows it;
// no program can look at them before main.
TEST(ProcessObjects, AreConstructedInTheirOrder) {
  std::ifstream file(CORVANE_SOURCE_DIR "/src/app/process_objects.cpp");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  std::size_t at = 0;
  for (const char *definition :
       {"} memoryGuard;", "\nPatternRandom patternRandom;", "\nPlanningComparators comparators;",
        "\nRunRecord runRecord(comparators);", "\nstd::ofstream logStream;", "} poolRegistry;"}) {
    const std::size_t found = text.find(definition);
    ASSERT_NE(found, std::string::npos) << definition;
    EXPECT_GE(found, at) << definition;
    at = found;
  }
}

TEST(ProcessObjects, StartWithBothSwitchesOfPooledAllocationOff) {
  EXPECT_EQ(zemPooledAllocation, 0);
  EXPECT_EQ(zemPooledAssociations, 0);
}

}  // namespace
}  // namespace corvane
