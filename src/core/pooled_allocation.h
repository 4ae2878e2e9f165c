#pragma once

#include <QtGlobal>
#include <cstddef>

namespace corvane {

// The switches of pooled allocation, read at every allocation and release. Both are zero at
// start-up, and while the first is zero everything comes from the plain heap.
//
// zemPooledAllocation: records and skip-list nodes come from their pools.
// zemPooledAssociations: with the first one on, entries of hash dictionaries do so as well.
//
// Whoever changes a switch sees to it that no block crosses the change: a heap block that is
// released to a pool is reported as foreign (it is still released).
extern qint32 zemPooledAllocation;
extern qint32 zemPooledAssociations;

// The plain heap behind every pooled path. heapAllocate throws std::bad_alloc.
void *heapAllocate(std::size_t bytes);
void heapFree(void *block) noexcept;

}  // namespace corvane
