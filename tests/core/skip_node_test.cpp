#include "core/skip_node.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>

#include "core/zem_mem_mgr_factory.h"
#include "support/heap_probe.h"
#include "support/pool_dump.h"
#include "support/scoped_pooling.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::HeapProbe;
using support::ScopedPooling;
using support::StreamCapture;

// The pool of a level in the registry; null while there is none.
ZemMemMgr *poolOfLevel(int level) {
  const ZemMemGeometry geometry =
      ZemMemGeometry::of(static_cast<quint32>(8 + 8 * level), quint32{1} << (17 - level));
  return ZemMemMgrFactory::instance().lookup(
      {geometry.chunkSize * geometry.blocksPerChunk + geometry.blockSize});
}

class NodeOfLevel : public testing::TestWithParam<int> {
 protected:
  std::size_t size() const { return 8U + 8U * static_cast<std::size_t>(GetParam()); }
};

TEST_P(NodeOfLevel, HasEightBytesAndEightMoreForEachLevel) {
  EXPECT_EQ(SkipNode::sizeOf(GetParam()), size());
  HeapProbe probe;
  SkipNode *node = SkipNode::allocate(nullptr, GetParam());
  EXPECT_EQ(probe.requestsOf(size()), 1U);
  SkipNode::release(node, GetParam());
  EXPECT_TRUE(probe.wasReleased(node));
}

TEST_P(NodeOfLevel, HoldsTheElementAndStartsWithoutSuccessors) {
  int element = 7;
  SkipNode *node = SkipNode::allocate(&element, GetParam());
  EXPECT_EQ(node->element, &element);
  for (int level = 0; level < GetParam(); ++level) {
    EXPECT_EQ(node->next(level), nullptr) << level;
  }
  SkipNode::release(node, GetParam());
}

INSTANTIATE_TEST_SUITE_P(EveryLevel, NodeOfLevel, testing::Range(1, 33));

class PooledNodeOfLevel : public testing::TestWithParam<int> {};

TEST_P(PooledNodeOfLevel, ComesFromThePoolOfItsLevel) {
  const int level = GetParam();
  const ScopedPooling pooling(true);
  SkipNode *node = SkipNode::allocate(nullptr, level);
  ZemMemMgr *pool = poolOfLevel(level);
  ASSERT_NE(pool, nullptr);
  EXPECT_THAT(pool->name(), testing::HasSubstr("skipNode(L" + std::to_string(level) + ")"));
  EXPECT_EQ(pool->blockSize(), 8U + 8U * static_cast<quint32>(level));
  const quint32 used = pool->usedBlocks();
  EXPECT_GE(used, 1U);
  SkipNode::release(node, level);
  EXPECT_EQ(pool->usedBlocks(), used - 1U);
}

TEST_P(PooledNodeOfLevel, KeepsItsLevelInTheFirstForwardPointerWhileFree) {
  const int level = GetParam();
  const ScopedPooling pooling(true);
  SkipNode *node = SkipNode::allocate(nullptr, level);
  SkipNode::release(node, level);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(node->next(0)), static_cast<std::uintptr_t>(level));
}

INSTANTIATE_TEST_SUITE_P(EveryPooledLevel, PooledNodeOfLevel, testing::Range(1, 17));

TEST(SkipNodePool, LevelOneFixesItsOwnBlocksPerChunk) {
  const ScopedPooling pooling(true);
  SkipNode::release(SkipNode::allocate(nullptr, 1), 1);
  const ZemMemMgr *pool = poolOfLevel(1);
  ASSERT_NE(pool, nullptr);
  EXPECT_EQ(pool->blocksPerChunk(), 65532U);
  EXPECT_EQ(pool->chunkSize(), 1048572U);
}

TEST(SkipNodePool, LevelSixteenAsksForTwoBlocks) {
  const ScopedPooling pooling(true);
  SkipNode::release(SkipNode::allocate(nullptr, 16), 16);
  const ZemMemMgr *pool = poolOfLevel(16);
  ASSERT_NE(pool, nullptr);
  // 2 x 136 + 56 = 328 is nearer to 256 than to 512.
  EXPECT_EQ(pool->chunkSize(), 252U);
  EXPECT_EQ(pool->blocksPerChunk(), 1U);
}

TEST(SkipNodePool, ANodeOfLevel17OrMoreIsServedByThePlainHeapEvenWhilePoolingIsOn) {
  const ScopedPooling pooling(true);
  for (const int level : {17, 18, 32}) {
    HeapProbe probe;
    SkipNode *node = SkipNode::allocate(nullptr, level);
    EXPECT_EQ(probe.requestsOf(SkipNode::sizeOf(level)), 1U) << level;
    SkipNode::release(node, level);
    EXPECT_TRUE(probe.wasReleased(node)) << level;
  }
}

TEST(SkipNodePool, WhilePoolingIsOffNoPoolHandsOutANode) {
  const StreamCapture out(std::cout);
  SkipNode *pooled = nullptr;
  {
    const ScopedPooling pooling(true);
    pooled = SkipNode::allocate(nullptr, 2);
  }
  const quint32 used = poolOfLevel(2)->usedBlocks();
  SkipNode *plain = SkipNode::allocate(nullptr, 2);
  EXPECT_EQ(poolOfLevel(2)->usedBlocks(), used);
  SkipNode::release(plain, 2);
  {
    const ScopedPooling pooling(true);
    SkipNode::release(pooled, 2);
  }
  EXPECT_EQ(out.text(), "");
}

TEST(SkipNodePool, AReleaseBeforeTheLevelHasAPoolIsAPlainDelete) {
  // Every test has a process of its own under ctest; in one process another test may have made the
  // pool, and the release reports a foreign block instead.
  const StreamCapture out(std::cout);
  const bool hadPool = poolOfLevel(13) != nullptr;
  SkipNode *node = SkipNode::allocate(nullptr, 13);
  const ScopedPooling pooling(true);
  HeapProbe probe;
  SkipNode::release(node, 13);
  EXPECT_TRUE(probe.wasReleased(node));
  EXPECT_EQ(out.text().empty(), !hadPool);
}

TEST(SkipNodePool, ThePoolsOfTheLevelsAreMadeOnce) {
  const ScopedPooling pooling(true);
  SkipNode *first = SkipNode::allocate(nullptr, 5);
  const std::string name = poolOfLevel(5)->name();
  SkipNode *second = SkipNode::allocate(nullptr, 5);
  EXPECT_EQ(poolOfLevel(5)->name(), name);
  SkipNode::release(second, 5);
  SkipNode::release(first, 5);
}

}  // namespace
}  // namespace corvane
