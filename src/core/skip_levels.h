#pragma once

#include <QtGlobal>

namespace corvane {

// How the levels of new skip-list nodes are chosen (W. Pugh, "Skip Lists: A Probabilistic
// Alternative to Balanced Trees", CACM 33(6), 1990), with a parameter k that sets how thin the
// levels are.

// The parameter for a construction argument 0 to 8; 4 for any other argument.
int skipLevelParameter(int argument);

// One draw of the 32-bit Galois shift register: steps the state and returns the bit.
quint32 drawBit(quint32 &state);

// The level of a new node by draws from the register: each step takes 1, 2 or 3 draws, by k. Odd k
// gives one level less where there is more than one. At most 32.
int randomLevel(quint32 &state, int k);

// The level of the node that makes the count n (n >= 1), by the powers of 2 that divide n; the rule
// for elements that are appended in order. Same reduction for odd k. At most 32.
int countedLevel(quint32 n, int k);

}  // namespace corvane
