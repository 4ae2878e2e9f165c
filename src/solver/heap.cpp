#include "solver/heap.h"

#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace corvane::lp {

void keepFreedMemory() {
#if defined(__GLIBC__)
  constexpr int kKept = 64 << 20;
  constexpr int kLargestOnHeap = 32 << 20;
  constexpr int kGrowth = 1 << 20;
  mallopt(M_TRIM_THRESHOLD, kKept);
  mallopt(M_MMAP_THRESHOLD, kLargestOnHeap);
  mallopt(M_TOP_PAD, kGrowth);
#endif
}

}  // namespace corvane::lp
