#pragma once

#include <cstddef>

namespace corvane {

// A node of a skip list: the element, followed by one forward pointer for each of its levels. The
// node does not know its level.
struct SkipNode {
  // Never more levels than this, however long the list.
  static constexpr int kMaxLevel = 32;

  void *element;

  SkipNode **forward() { return reinterpret_cast<SkipNode **>(this + 1); }
  SkipNode *&next(int level) { return forward()[level]; }

  static constexpr std::size_t sizeOf(int level) {
    return sizeof(SkipNode) + sizeof(void *) * static_cast<std::size_t>(level);
  }

  // A node with these levels (1 to kMaxLevel), all forward pointers null. It comes from the pool of
  // its level while pooled allocation is on and the level is at most 16, else from the plain heap;
  // throws std::bad_alloc. release() takes the same way back.
  static SkipNode *allocate(void *element, int level);
  static void release(SkipNode *node, int level);
};

}  // namespace corvane
