#include "core/zem_mem_mgr_factory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>

#include "support/heap_probe.h"
#include "support/pool_dump.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::StreamCapture;

TEST(ZemMemMgrFactory, HasNineteenBucketsAndItsFlag) {
  EXPECT_EQ(ZemMemMgrFactory::instance().bucketCount(), 19U);
  EXPECT_TRUE(ZemMemMgrFactory::instance().flag());
}

TEST(ZemMemMgrFactory, IsOneObjectForTheProcessWithSharingOn) {
  ZemMemMgrFactory &factory = ZemMemMgrFactory::instance();
  EXPECT_EQ(&factory, &ZemMemMgrFactory::instance());
  EXPECT_EQ(factory.create(716, "shared once", 7), factory.create(716, "shared twice", 7));
}

TEST(ZemMemMgrFactory, TwoPoolsOfTheSameSizeAndCountAreOneWhoseNameIsBothJoinedByAColon) {
  ZemMemMgrFactory factory;
  ZemMemMgr *first = factory.create(40, "Pattern", 256);
  ZemMemMgr *second = factory.create(40, "Other", 256);
  EXPECT_EQ(first, second);
  EXPECT_EQ(first->name(), "Pattern:Other");
  EXPECT_EQ(factory.count(), 1);
}

TEST(ZemMemMgrFactory, SizesThatRoundToOneAreShared) {
  ZemMemMgrFactory factory;
  EXPECT_EQ(factory.create(37, "a", 256), factory.create(40, "b", 256));
  EXPECT_EQ(factory.count(), 1);
}

TEST(ZemMemMgrFactory, CountsThatGiveOneGeometryAreShared) {
  ZemMemMgrFactory factory;
  EXPECT_EQ(factory.create(40, "a", 256), factory.create(40, "b", 203));
}

TEST(ZemMemMgrFactory, OtherGeometriesGetPoolsOfTheirOwn) {
  ZemMemMgrFactory factory;
  ZemMemMgr *a = factory.create(40, "a", 256);
  ZemMemMgr *b = factory.create(48, "b", 256);
  EXPECT_NE(a, b);
  EXPECT_EQ(support::dump(*a), "a: 203 blocks of 40 in 8188; 0 chunks, 0 used");
  EXPECT_EQ(support::dump(*b), "b: 340 blocks of 48 in 16380; 0 chunks, 0 used");
  EXPECT_EQ(factory.count(), 2);
}

TEST(ZemMemMgrFactory, TheKeyIsChunkSizeTimesBlocksPerChunkPlusBlockSize) {
  ZemMemMgrFactory factory;
  ZemMemMgr *pool = factory.create(40, "Pattern", 256);
  EXPECT_EQ(factory.lookup({8188U * 203U + 40U}), pool);
  ZemMemMgr *large = factory.create(16, "large", 65536);
  // 1,048,572 x 65,532 + 16 leaves 32 bits.
  EXPECT_EQ(factory.lookup({1048572U * 65532U + 16U}), large);
}

TEST(ZemMemMgrFactory, AKeyIsItsOwnHash) {
  EXPECT_EQ(OrbHash<ZemMemMgrKey>()({123456U}), 123456U);
}

TEST(ZemMemMgrFactory, WithSharingOffEveryRequestMakesAPool) {
  ZemMemMgrFactory factory(false);
  ZemMemMgr *first = factory.create(40, "a", 256);
  ZemMemMgr *second = factory.create(40, "b", 256);
  EXPECT_NE(first, second);
  EXPECT_EQ(first->name(), "a");
  EXPECT_EQ(factory.lookup({1}), first);
  EXPECT_EQ(factory.lookup({2}), second);
}

// 20 x 3 and 140 x 1 have the key 124 x 3 + 20 = 252 x 1 + 140 = 392.
TEST(ZemMemMgrFactory, ACollisionOfKeysIsReportedAndTheKeyAdjusted) {
  ZemMemMgrFactory factory;
  StreamCapture out(std::cout);
  ZemMemMgr *first = factory.create(20, "first", 3);
  EXPECT_EQ(out.take(), "");
  ZemMemMgr *second = factory.create(140, "second", 1);
  EXPECT_EQ(out.take(),
            "ZemMemMgrFactory::create - hash key collision between second(140,1) and"
            "first(20,3). Adjusting... \n");
  EXPECT_NE(first, second);
  EXPECT_EQ(factory.lookup({392}), first);
  EXPECT_EQ(factory.lookup({392 + 252}), second);
  EXPECT_EQ(first->name(), "first");
}

TEST(ZemMemMgrFactory, APoolBehindAnAdjustedKeyIsFoundAgainAndShared) {
  ZemMemMgrFactory factory;
  StreamCapture out(std::cout);
  factory.create(20, "first", 3);
  ZemMemMgr *second = factory.create(140, "second", 1);
  out.take();
  EXPECT_EQ(factory.create(140, "third", 1), second);
  EXPECT_EQ(second->name(), "second:third");
  EXPECT_EQ(factory.count(), 2);
  EXPECT_EQ(out.take(),
            "ZemMemMgrFactory::create - hash key collision between third(140,1) and"
            "first(20,3). Adjusting... \n");
}

TEST(ZemMemMgrFactory, TheOldPoolIsReportedWithItsBlocksPerChunkAndTheNewOneWithItsRequest) {
  ZemMemMgrFactory factory;
  const StreamCapture out(std::cout);
  factory.create(140, "old", 1);
  factory.create(17, "new", 2);  // 20 x 2 + 56 = 96 lies midway between 64 and 128
  EXPECT_EQ(out.text(), "");
  factory.create(19, "newer", 3);
  EXPECT_EQ(out.text(),
            "ZemMemMgrFactory::create - hash key collision between newer(20,3) and"
            "old(140,1). Adjusting... \n");
}

TEST(ZemMemMgrFactory, SizesBelowEightNeverMatchTheirPoolsSinceTheKeyKnowsNoMinimum) {
  // The pool has blocks of 8 bytes, the request rounds to 4: each request adjusts once more.
  ZemMemMgrFactory factory;
  StreamCapture out(std::cout);
  factory.create(4, "a", 10);
  EXPECT_EQ(out.take(), "");
  factory.create(3, "b", 10);
  EXPECT_EQ(out.take(),
            "ZemMemMgrFactory::create - hash key collision between b(4,10) anda(8,8). "
            "Adjusting... \n");
  factory.create(4, "c", 10);
  EXPECT_EQ(out.take(),
            "ZemMemMgrFactory::create - hash key collision between c(4,10) anda(8,8). "
            "Adjusting... \n"
            "ZemMemMgrFactory::create - hash key collision between c(4,10) andb(8,8). "
            "Adjusting... \n");
  EXPECT_EQ(factory.count(), 3);
}

TEST(ZemMemMgrFactory, OwnsItsPools) {
  support::HeapProbe probe;
  std::size_t requests = 0;
  {
    ZemMemMgrFactory factory;
    factory.create(40, "a", 256)->allocate();
    factory.create(48, "b", 256);
    requests = probe.requests();
  }
  EXPECT_EQ(probe.releases(), requests);
}

TEST(ZemMemMgrFactory, WithoutMemoryForAPoolNothingIsEntered) {
  // Key, pool, entry. (The names fit into their strings.)
  for (const int failing : {1, 2, 3}) {
    ZemMemMgrFactory factory;
    const std::string name = "a";
    {
      support::HeapProbe probe;
      probe.failRequest(failing);
      EXPECT_THROW(factory.create(40, name, 256), std::bad_alloc);
    }
    EXPECT_EQ(factory.count(), 0);
    EXPECT_NE(factory.create(40, name, 256), nullptr);
  }
}

}  // namespace
}  // namespace corvane
