#include "core/pooled_allocation.h"

#include <new>

namespace corvane {

constinit qint32 zemPooledAllocation = 0;
constinit qint32 zemPooledAssociations = 0;

void *heapAllocate(std::size_t bytes) {
  return ::operator new(bytes);
}

void heapFree(void *block) noexcept {
  ::operator delete(block);
}

}  // namespace corvane
