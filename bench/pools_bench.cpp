// The block pools against the plain heap, for blocks of the size of a pattern.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "core/zem_mem_mgr.h"

using namespace corvane;

namespace {

constexpr quint32 kBlockSize = 40;
constexpr quint32 kBlocksPerChunk = 256;

struct Heap {
  void *allocate() { return heapAllocate(kBlockSize); }
  void release(void *block) { heapFree(block); }
};

struct Pool {
  void *allocate() { return pool.allocate(); }
  void release(void *block) { pool.freeFast(block); }
  ZemMemMgr pool{kBlockSize, "bench", kBlocksPerChunk};
};

// Takes blocks and gives them back in the order taken, or in random order.
template <typename Source, bool kShuffled>
void takeAndGiveBack(benchmark::State &state) {
  std::vector<void *> blocks(static_cast<std::size_t>(state.range(0)));
  std::vector<std::size_t> order(blocks.size());
  for (std::size_t at = 0; at < order.size(); ++at) {
    order[at] = at;
  }
  if (kShuffled) {
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
  }
  Source source;
  for (auto unused : state) {
    for (void *&block : blocks) {
      block = source.allocate();
    }
    for (const std::size_t at : order) {
      source.release(blocks[at]);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_TEMPLATE(takeAndGiveBack, Heap, false)->Range(1 << 8, 1 << 18);
BENCHMARK_TEMPLATE(takeAndGiveBack, Pool, false)->Range(1 << 8, 1 << 18);
BENCHMARK_TEMPLATE(takeAndGiveBack, Heap, true)->Range(1 << 8, 1 << 18);
BENCHMARK_TEMPLATE(takeAndGiveBack, Pool, true)->Range(1 << 8, 1 << 18);

}  // namespace
