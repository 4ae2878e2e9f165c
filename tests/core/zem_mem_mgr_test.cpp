#include "core/zem_mem_mgr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <map>
#include <random>
#include <sstream>

#include "support/heap_probe.h"
#include "support/pool_dump.h"
#include "support/scoped_pooling.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::HeapProbe;
using support::StreamCapture;

struct GeometryCase {
  quint32 size;
  quint32 count;
  const char *dump;
};

TEST(ZemMemMgr, TheGeometryFollowsFromSizeAndCount) {
  const GeometryCase cases[] = {
      // Total 1,048,632 is nearer to 2^20 than to 2^21.
      {16, 65536, "p: 65532 blocks of 16 in 1048572; 0 chunks, 0 used"},
      // Total 10,296: 8,192 is 2,104 away, 16,384 is 6,088 away.
      {40, 256, "p: 203 blocks of 40 in 8188; 0 chunks, 0 used"},
      {32, 256, "p: 254 blocks of 32 in 8188; 0 chunks, 0 used"},
      // Total 128 is a power of two: one block fewer than asked for.
      {24, 3, "p: 2 blocks of 24 in 124; 0 chunks, 0 used"},
      {8, 9, "p: 8 blocks of 8 in 124; 0 chunks, 0 used"},
      // Total 192 lies midway between 128 and 256: the lower one.
      {8, 17, "p: 8 blocks of 8 in 124; 0 chunks, 0 used"},
      {8, 18, "p: 24 blocks of 8 in 252; 0 chunks, 0 used"},
      {1000, 100, "p: 131 blocks of 1000 in 131068; 0 chunks, 0 used"},
  };
  for (const GeometryCase &item : cases) {
    EXPECT_EQ(support::dump(ZemMemMgr(item.size, "p", item.count)), item.dump)
        << item.size << " x " << item.count;
  }
}

TEST(ZemMemMgr, ARequestedSizeOf1To8GivesEightByteBlocksAnd9Gives12) {
  for (quint32 size = 0; size <= 8; ++size) {
    EXPECT_EQ(ZemMemMgr(size, "p", 10).blockSize(), 8U) << size;
  }
  EXPECT_EQ(ZemMemMgr(9, "p", 10).blockSize(), 12U);
  EXPECT_EQ(ZemMemMgr(12, "p", 10).blockSize(), 12U);
  EXPECT_EQ(ZemMemMgr(13, "p", 10).blockSize(), 16U);
}

TEST(ZemMemMgr, Size16WithCount65536GivesFourBlocksFewer) {
  const ZemMemMgr pool(16, "p", 65536);
  EXPECT_EQ(pool.chunkSize(), 1048572U);
  EXPECT_EQ(pool.blocksPerChunk(), 65532U);
}

TEST(ZemMemMgr, ATotalThatIsAPowerOfTwoYieldsOneBlockFewer) {
  for (quint32 power = 7; power < 20; ++power) {
    const quint32 count = ((quint32{1} << power) - 56U) / 8U;
    EXPECT_EQ(ZemMemGeometry::of(8, count).blocksPerChunk, count - 1U) << power;
  }
}

TEST(ZemMemMgr, TheChunkIsThePowerOfTwoNearestToTheTotalLess4) {
  std::mt19937 random(11);
  for (int round = 0; round < 20000; ++round) {
    const quint32 size = 8U + 4U * static_cast<quint32>(random() % 125);
    const quint32 count = 1U + static_cast<quint32>(random() % 5000);
    const std::int64_t total = std::int64_t{size} * count + 56;
    std::int64_t nearest = 64;
    for (std::int64_t power = 64; power < std::int64_t{1} << 32; power *= 2) {
      nearest = std::abs(total - power) < std::abs(total - nearest) ? power : nearest;
    }
    const ZemMemGeometry geometry = ZemMemGeometry::of(size, count);
    ASSERT_EQ(geometry.chunkSize, nearest - 4) << size << " x " << count;
    ASSERT_EQ(geometry.blocksPerChunk, (nearest - 4 - 56) / size) << size << " x " << count;
  }
}

TEST(ZemMemMgr, TheArithmeticOfTheTotalIsThirtyTwoBitsWide) {
  // 65536 x 65536 leaves 32 bits: the total is 56, whose nearest power of two is 64.
  const ZemMemGeometry geometry = ZemMemGeometry::of(65536, 65536);
  EXPECT_EQ(geometry.chunkSize, 60U);
  EXPECT_EQ(geometry.blocksPerChunk, 0U);
}

TEST(ZemMemMgr, AGeometryOfBlocksWithoutSizeHoldsNone) {
  EXPECT_EQ(ZemMemGeometry::of(0, 10).blocksPerChunk, 0U);
}

TEST(ZemMemMgr, AChunkIsTakenWithTheFirstBlockAndHasAHeaderOf56Bytes) {
  ZemMemMgr pool(40, "p", 256);
  HeapProbe probe;
  EXPECT_EQ(probe.requestsOf(8188), 0U);
  auto *block = static_cast<char *>(pool.allocate());
  EXPECT_EQ(probe.requestsOf(8188), 1U);
  EXPECT_EQ(pool.chunkCount(), 1U);
  // The chunk starts 56 bytes before its first block; releasing it shows where it started.
  for (quint32 at = 1; at < pool.blocksPerChunk(); ++at) {
    pool.allocate();
  }
  void *next = pool.allocate();
  ASSERT_EQ(pool.chunkCount(), 2U);
  for (quint32 at = 0; at < pool.blocksPerChunk(); ++at) {
    pool.freeMem(block + 40 * std::size_t{at});
  }
  EXPECT_EQ(pool.chunkCount(), 1U);
  EXPECT_TRUE(probe.wasReleased(block - 56));
  pool.freeMem(next);
}

TEST(ZemMemMgr, BlocksOfAFreshChunkComeFromTheLowestAddressUpwards) {
  ZemMemMgr pool(40, "p", 256);
  auto *first = static_cast<char *>(pool.allocate());
  for (quint32 at = 1; at < pool.blocksPerChunk(); ++at) {
    ASSERT_EQ(pool.allocate(), first + 40 * std::size_t{at});
  }
}

TEST(ZemMemMgr, ABlockThatWasTakenBackIsHandedOutNext) {
  ZemMemMgr pool(40, "p", 256);
  void *a = pool.allocate();
  void *b = pool.allocate();
  pool.freeMem(a);
  pool.freeMem(b);
  EXPECT_EQ(pool.allocate(), b);
  EXPECT_EQ(pool.allocate(), a);
}

TEST(ZemMemMgr, AFreeBlockHoldsTheNextFreeOneInItsFirstEightBytes) {
  ZemMemMgr pool(40, "p", 256);
  void *a = pool.allocate();
  void *b = pool.allocate();
  pool.freeMem(a);
  pool.freeMem(b);
  void *next = nullptr;
  std::memcpy(static_cast<void *>(&next), b, sizeof next);
  EXPECT_EQ(next, a);
}

TEST(ZemMemMgr, FreeingTheOnlyBlockOfAPoolsOnlyChunkKeepsTheChunk) {
  for (const bool fast : {false, true}) {
    ZemMemMgr pool(40, "p", 256);
    void *block = pool.allocate();
    HeapProbe probe;
    fast ? pool.freeFast(block) : pool.freeMem(block);
    EXPECT_EQ(probe.releases(), 0U);
    EXPECT_EQ(support::dump(pool), "p: 203 blocks of 40 in 8188; 1 chunks, 0 used");
    EXPECT_EQ(pool.allocate(), block);
  }
}

TEST(ZemMemMgr, TheLastBlockOfOneOfTwoChunksReleasesTheChunk) {
  for (const bool fast : {false, true}) {
    ZemMemMgr pool(24, "p", 3);  // 2 blocks a chunk
    void *a = pool.allocate();
    pool.allocate();
    void *c = pool.allocate();
    ASSERT_EQ(pool.chunkCount(), 2U);
    fast ? pool.freeFast(c) : pool.freeMem(c);
    EXPECT_EQ(pool.chunkCount(), 1U);
    EXPECT_EQ(pool.usedBlocks(), 2U);
    fast ? pool.freeFast(a) : pool.freeMem(a);
    EXPECT_EQ(pool.allocate(), a);
  }
}

TEST(ZemMemMgr, AFullChunkThatGetsABlockBackIsUsedBeforeANewOne) {
  ZemMemMgr pool(24, "p", 3);
  void *a = pool.allocate();
  pool.allocate();
  pool.allocate();
  pool.allocate();
  ASSERT_EQ(pool.chunkCount(), 2U);
  pool.freeMem(a);
  EXPECT_EQ(pool.allocate(), a);
  EXPECT_EQ(pool.chunkCount(), 2U);
  pool.allocate();
  EXPECT_EQ(pool.chunkCount(), 3U);
}

TEST(ZemMemMgr, ABlockThatNoChunkOwnsIsReportedAndReleasedToThePlainHeap) {
  for (const bool fast : {false, true}) {
    for (const bool empty : {false, true}) {
      ZemMemMgr pool(40, "p", 256);
      if (!empty) {
        pool.allocate();
      }
      void *foreign = heapAllocate(40);
      std::ostringstream expected;
      expected << "ZemMemMgr::freeMem - freeing buffer @0x" << std::hex
               << reinterpret_cast<std::uintptr_t>(foreign) << " outside of memory pools.\n";
      StreamCapture out(std::cout);
      HeapProbe probe;
      fast ? pool.freeFast(foreign) : pool.freeMem(foreign);
      EXPECT_TRUE(probe.wasReleased(foreign));
      EXPECT_EQ(out.text(), expected.str());
      EXPECT_EQ(pool.usedBlocks(), empty ? 0U : 1U);
    }
  }
}

TEST(ZemMemMgr, BlocksBesideAChunkAreForeignToo) {
  // Two chunks, so that the look-up by address has a chunk on either side of some of them.
  ZemMemMgr pool(1000, "p", 100);
  for (quint32 at = 0; at <= pool.blocksPerChunk(); ++at) {
    pool.allocate();
  }
  const StreamCapture out(std::cout);
  for (int at = 0; at < 20; ++at) {
    pool.freeMem(heapAllocate(200000));
  }
  EXPECT_EQ(pool.usedBlocks(), pool.blocksPerChunk() + 1U);
}

TEST(ZemMemMgr, APoolWhoseChunksHoldNoBlockAnswersWithPlainHeap) {
  ZemMemMgr pool(65536, "p", 65536);
  const StreamCapture out(std::cout);
  HeapProbe probe;
  void *block = pool.allocate();
  EXPECT_EQ(probe.requestsOf(65536), 1U);
  EXPECT_EQ(pool.chunkCount(), 0U);
  pool.freeMem(block);
  EXPECT_TRUE(probe.wasReleased(block));
}

TEST(ZemMemMgr, ThePoolFreesItsChunks) {
  HeapProbe probe;
  std::size_t requests = 0;
  {
    ZemMemMgr pool(24, "p", 3);
    for (int at = 0; at < 9; ++at) {
      pool.allocate();
    }
    EXPECT_EQ(pool.chunkCount(), 5U);
    requests = probe.requests();
  }
  EXPECT_EQ(probe.releases(), requests);
}

TEST(ZemMemMgr, WithoutMemoryForAChunkThePoolIsAsBefore) {
  // The chunk itself, then its entry in the address index.
  for (const int failing : {1, 2}) {
    ZemMemMgr pool(24, "p", 3);
    void *a = pool.allocate();
    pool.allocate();
    {
      HeapProbe probe;
      probe.failRequest(failing);
      EXPECT_THROW(pool.allocate(), std::bad_alloc);
    }
    EXPECT_EQ(pool.chunkCount(), 1U);
    EXPECT_EQ(pool.usedBlocks(), 2U);
    pool.freeMem(a);
    EXPECT_EQ(pool.allocate(), a);
    EXPECT_NE(pool.allocate(), nullptr);
    EXPECT_EQ(pool.chunkCount(), 2U);
  }
}

// Two blocks a chunk. The second chunk is full when there is no memory for a third; then both get a
// block back, the second one by the short way, and both blocks must be handed out again.
TEST(ZemMemMgr, WithoutMemoryForAChunkNoFreeBlockIsForgotten) {
  ZemMemMgr pool(24, "p", 3);
  void *first = pool.allocate();
  pool.allocate();
  void *second = pool.allocate();
  pool.allocate();
  {
    HeapProbe probe;
    probe.failRequest(1);
    EXPECT_THROW(pool.allocate(), std::bad_alloc);
  }
  pool.freeFast(second);
  pool.freeFast(first);
  EXPECT_EQ(pool.allocate(), first);
  EXPECT_EQ(pool.allocate(), second);
  EXPECT_EQ(pool.chunkCount(), 2U);
}

TEST(ZemMemMgr, ItsNameGrowsByColons) {
  ZemMemMgr pool(8, "a", 10);
  pool.extendName("b");
  pool.extendName("c");
  EXPECT_EQ(pool.name(), "a:b:c");
}

// Drives a pool and holds it to what every pool keeps: blocks lie on their places in a chunk and
// belong to one user; no chunk is made while another has a free block, and one without a used block
// goes, unless it is the only one; the block taken back last is the next to be handed out. Every
// step answers what is wrong, or nothing.
class WatchedPool {
 public:
  WatchedPool(quint32 size, quint32 count) : pool_(size, "p", count) {}

  std::string allocate() {
    const bool hasFreeBlock = live_.size() < chunks_.size() * pool_.blocksPerChunk();
    auto *block = static_cast<unsigned char *>(pool_.allocate());
    if (pool_.chunkCount() > chunks_.size()) {
      chunks_[block] = 0;
      if (hasFreeBlock) {
        return "a chunk was made in spite of a free block";
      }
    }
    if (takenBack_ != nullptr && block != takenBack_) {
      return "another block than the one taken back last";
    }
    takenBack_ = nullptr;
    const auto chunk = chunkOf(block);
    if (chunk == chunks_.end() || (block - chunk->first) % pool_.blockSize() != 0) {
      return "a block beside its place";
    }
    ++chunk->second;
    std::memset(block, mark(live_.size()), pool_.blockSize());
    live_.push_back({block, mark(live_.size())});
    return compare();
  }

  std::string release(std::size_t at, bool fast) {
    if (live_.empty()) {
      return "";
    }
    at %= live_.size();
    const Live freed = live_[at];
    live_.erase(live_.begin() + static_cast<std::ptrdiff_t>(at));
    if (std::any_of(freed.block, freed.block + pool_.blockSize(),
                    [&](unsigned char byte) { return byte != freed.mark; })) {
      return "a live block was overwritten";
    }
    takenBack_ = freed.block;
    const auto chunk = chunkOf(freed.block);
    if (--chunk->second == 0 && chunks_.size() > 1) {
      chunks_.erase(chunk);
      takenBack_ = nullptr;
    }
    fast ? pool_.freeFast(freed.block) : pool_.freeMem(freed.block);
    return compare();
  }

 private:
  struct Live {
    unsigned char *block;
    unsigned char mark;
  };
  // The used blocks of every chunk, by the address of its first block.
  using Chunks = std::map<unsigned char *, quint32>;

  static unsigned char mark(std::size_t number) {
    return static_cast<unsigned char>(number * 37 + 1);
  }
  Chunks::iterator chunkOf(unsigned char *block) {
    const auto after = chunks_.upper_bound(block);
    if (after == chunks_.begin()) {
      return chunks_.end();
    }
    const auto chunk = std::prev(after);
    const std::size_t size = std::size_t{pool_.blockSize()} * pool_.blocksPerChunk();
    return block < chunk->first + size ? chunk : chunks_.end();
  }
  std::string compare() const {
    return pool_.chunkCount() != chunks_.size() ? "number of chunks"
           : pool_.usedBlocks() != live_.size() ? "number of used blocks"
                                                : "";
  }

  ZemMemMgr pool_;
  Chunks chunks_;
  std::vector<Live> live_;
  const unsigned char *takenBack_ = nullptr;
};

// Letters: allocate; release the oldest, the second or the newest block, by the full or short way.
std::string applyLetter(WatchedPool &pool, int letter) {
  switch (letter) {
    case 0:
      return pool.allocate();
    case 1:
      return pool.release(0, false);
    case 2:
      return pool.release(0, true);
    case 3:
      return pool.release(1, true);
    default:
      return pool.release(static_cast<std::size_t>(-1), false);
  }
}

TEST(ZemMemMgr, KeepsItsRulesThroughEveryShortSequence) {
  constexpr int kLetters = 5;
  constexpr int kLength = 9;
  // One, two and three blocks a chunk, so that short sequences cross chunks.
  for (const quint32 size : {44U, 24U, 20U}) {
    int sequences = 1;
    for (int at = 0; at < kLength - 4; ++at) {
      sequences *= kLetters;
    }
    for (int sequence = 0; sequence < sequences; ++sequence) {
      WatchedPool pool(size, 3);
      std::string difference;
      for (int at = 0; at < 4 && difference.empty(); ++at) {
        difference = pool.allocate();
      }
      int rest = sequence;
      for (int at = 4; at < kLength && difference.empty(); ++at, rest /= kLetters) {
        difference = applyLetter(pool, rest % kLetters);
      }
      ASSERT_EQ(difference, "") << "size " << size << ", sequence " << sequence;
    }
  }
}

TEST(ZemMemMgr, KeepsItsRulesThroughLongRandomSequences) {
  struct Shape {
    quint32 size;
    quint32 count;
  };
  for (const Shape &shape : {Shape{24, 3}, {8, 9}, {40, 20}, {12, 100}, {136, 2}}) {
    std::mt19937 random(shape.size);
    WatchedPool pool(shape.size, shape.count);
    for (int step = 0; step < 6000; ++step) {
      const bool filling = step / 500 % 2 == 0;
      const bool allocate = random() % 10 < (filling ? 6U : 4U);
      const std::string difference =
          allocate ? pool.allocate() : pool.release(random(), random() % 2 == 0);
      ASSERT_EQ(difference, "") << shape.size << " x " << shape.count << ", step " << step;
    }
  }
}

TEST(PooledAllocation, BothSwitchesAreOffAtStartUp) {
  EXPECT_EQ(zemPooledAllocation, 0);
  EXPECT_EQ(zemPooledAssociations, 0);
}

TEST(PooledAllocation, ThePlainHeapGivesAndTakesBack) {
  HeapProbe probe;
  void *block = heapAllocate(48);
  EXPECT_EQ(probe.requestsOf(48), 1U);
  heapFree(block);
  EXPECT_TRUE(probe.wasReleased(block));
}

TEST(PooledAllocation, WithoutMemoryThePlainHeapThrows) {
  HeapProbe probe;
  probe.failRequest(1);
  EXPECT_THROW(heapAllocate(48), std::bad_alloc);
}

}  // namespace
}  // namespace corvane
