#include "core/pooled_allocation.h"

#include <gtest/gtest.h>

#include "core/heap_probe.h"
#include "support/scoped_pooling.h"

namespace corvane {
namespace {

TEST(PooledAllocation, BothSwitchesAreOffAtStartUp) {
  EXPECT_EQ(zemPooledAllocation, 0);
  EXPECT_EQ(zemPooledAssociations, 0);
}

TEST(PooledAllocation, TheGuardOfTheTestsRestoresTheSwitches) {
  {
    const support::ScopedPooling pooling(true, true);
    EXPECT_EQ(zemPooledAllocation, 1);
    EXPECT_EQ(zemPooledAssociations, 1);
  }
  EXPECT_EQ(zemPooledAllocation, 0);
  EXPECT_EQ(zemPooledAssociations, 0);
}

TEST(PooledAllocation, ThePlainHeapGivesAndTakesBack) {
  support::HeapProbe probe;
  void *block = heapAllocate(48);
  EXPECT_EQ(probe.requestsOf(48), 1U);
  heapFree(block);
  EXPECT_TRUE(probe.wasReleased(block));
}

TEST(PooledAllocation, WithoutMemoryThePlainHeapThrows) {
  support::HeapProbe probe;
  probe.failRequest(1);
  EXPECT_THROW(heapAllocate(48), std::bad_alloc);
}

}  // namespace
}  // namespace corvane
