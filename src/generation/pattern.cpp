#include "generation/pattern.h"

#include "core/exchange_sort.h"
#include "core/zem_mem_mgr.h"
#include "core/zem_mem_mgr_factory.h"

namespace corvane {

namespace {

constexpr quint32 kPatternSize = 40;
constexpr quint32 kPatternsPerChunk = 256;

ZemMemMgr *patternPool = nullptr;

bool isPooled() {
  return zemPooledAllocation != 0 && patternPool != nullptr;
}

}  // namespace

void createPatternPool() {
  static_assert(sizeof(Pattern) == kPatternSize);
  patternPool = ZemMemMgrFactory::instance().create(kPatternSize, "Pattern", kPatternsPerChunk);
}

// The size is not looked at where the pool serves: every pattern fits one block.
void *Pattern::operator new(std::size_t size) {
  return isPooled() ? patternPool->allocate() : heapAllocate(size);
}

void Pattern::operator delete(void *block) noexcept {
  if (isPooled()) {
    patternPool->freeFast(block);
  } else {
    heapFree(block);
  }
}

void sortWidthsDescending(Pattern &pattern) {
  exchangeSort(pattern.widths, [](double a, double b) { return b > a; });
}

}  // namespace corvane
