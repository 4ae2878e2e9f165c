#pragma once

// Allocations that fail at will: this object stands in for malloc and its kin in the program that
// it is linked into, libraries included. (Under a sanitizer, which does so itself, it stands in for
// operator new and for the malloc, calloc and realloc of the program's own archives only.)
//
// Link with LINKER:--wrap for malloc, calloc and realloc.

namespace corvane::faults {

enum class Memory {
  kNone,    // nothing is counted
  kAll,     // every allocation
  kArrays,  // the flat arrays whose failure has words of its own: malloc and realloc by the program
            // itself
};

// From now on counts the allocations of that kind from 1, and lets the n-th one fail; and all later
// ones too, when `onwards` is set. An n of 0 lets none fail.
void failAllocation(Memory kind, long n, bool onwards);

// The allocations counted since.
long countedAllocations();

}  // namespace corvane::faults
