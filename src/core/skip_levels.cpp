#include "core/skip_levels.h"

#include <algorithm>
#include <array>

#include "core/skip_node.h"

namespace corvane {

namespace {

constexpr quint32 kTopBit = 0x80000000U;
constexpr quint32 kTaps = 0x57U;

int drawsPerStep(int k) {
  if (k == 8) {
    return 3;
  }
  return k == 4 || k == 5 ? 2 : 1;
}

unsigned countedBitsPerStep(int k) {
  if (k == 8) {
    return 3;
  }
  return k >= 4 ? 2 : 1;
}

bool allDrawsZero(quint32 &state, int draws) {
  for (int draw = 0; draw < draws; ++draw) {
    if (drawBit(state) != 0) {
      return false;
    }
  }
  return true;
}

int withOddReduction(int level, int k) {
  const int reduced = level >= 2 && k % 2 != 0 ? level - 1 : level;
  return std::min(reduced, SkipNode::kMaxLevel);
}

}  // namespace

int skipLevelParameter(int argument) {
  constexpr std::array<int, 9> kParameters = {4, 4, 2, 3, 4, 5, 4, 4, 8};
  const bool known = argument >= 0 && argument < static_cast<int>(kParameters.size());
  return known ? kParameters[static_cast<std::size_t>(argument)] : 4;
}

quint32 drawBit(quint32 &state) {
  if ((state & kTopBit) == 0) {
    state <<= 1U;
    return 0;
  }
  state = ((state ^ kTaps) << 1U) + 1U;
  return 1;
}

int randomLevel(quint32 &state, int k) {
  int level = 1;
  while (level <= SkipNode::kMaxLevel && allDrawsZero(state, drawsPerStep(k))) {
    ++level;
  }
  return withOddReduction(level, k);
}

int countedLevel(quint32 n, int k) {
  const unsigned bits = countedBitsPerStep(k);
  quint32 mask = (1U << bits) - 1U;
  int level = 1;
  while ((n & mask) == 0 && level <= SkipNode::kMaxLevel) {
    mask = (mask << bits) | ((1U << bits) - 1U);
    ++level;
  }
  return withOddReduction(level, k);
}

}  // namespace corvane
