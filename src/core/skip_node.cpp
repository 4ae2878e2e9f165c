#include "core/skip_node.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

#include "core/zem_mem_mgr.h"
#include "core/zem_mem_mgr_factory.h"

namespace corvane {

namespace {

constexpr int kPooledLevels = 16;

// One slot a level, filled on the first pooled allocation of that level.
std::array<ZemMemMgr *, kPooledLevels> poolOfLevel{};

bool isPooled(int level) {
  return zemPooledAllocation != 0 && level <= kPooledLevels;
}

ZemMemMgr *&slotOf(int level) {
  return poolOfLevel[static_cast<std::size_t>(level) - 1];
}

ZemMemMgr &poolFor(int level) {
  ZemMemMgr *&pool = slotOf(level);
  if (pool == nullptr) {
    pool = ZemMemMgrFactory::instance().create(static_cast<quint32>(SkipNode::sizeOf(level)),
                                               "skipNode(L" + std::to_string(level) + ")",
                                               quint32{1} << (17 - level));
  }
  return *pool;
}

}  // namespace

SkipNode *SkipNode::allocate(void *element, int level) {
  void *memory = isPooled(level) ? poolFor(level).allocate() : heapAllocate(sizeOf(level));
  auto *node = static_cast<SkipNode *>(memory);
  node->element = element;
  std::fill_n(node->forward(), level, nullptr);
  return node;
}

void SkipNode::release(SkipNode *node, int level) {
  if (!isPooled(level) || slotOf(level) == nullptr) {
    heapFree(node);
    return;
  }
  // A pooled node keeps its level where its first forward pointer stood.
  const auto word = static_cast<std::uintptr_t>(level);
  std::memcpy(static_cast<void *>(node->forward()), &word, sizeof word);
  slotOf(level)->freeFast(node);
}

}  // namespace corvane
