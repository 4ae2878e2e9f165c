#pragma once

// Allocations that fail at will: this object stands in for malloc and its kin in the program that
// it is linked into, libraries included. (Under a sanitizer, which does so itself, it stands in for
// operator new only.)

namespace corvane::faults {

// From now on counts the allocations from 1, and lets the n-th one fail; and all later ones too,
// when `onwards` is set. An n of 0 lets none fail.
void failAllocation(long n, bool onwards);

// The allocations counted since.
long countedAllocations();

}  // namespace corvane::faults
