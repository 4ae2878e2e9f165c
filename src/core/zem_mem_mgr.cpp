#include "core/zem_mem_mgr.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <iostream>
#include <new>
#include <utility>

namespace corvane {

constinit qint32 zemPooledAllocation = 0;
constinit qint32 zemPooledAssociations = 0;

void *heapAllocate(std::size_t bytes) {
  return ::operator new(bytes);
}

void heapFree(void *block) noexcept {
  ::operator delete(block);
}

// Stands at the start of a chunk; the blocks follow it. Blocks may be aligned to 4 only, so the
// link that a free block holds in its first 8 bytes is copied in and out.
struct ZemMemMgr::Chunk {
  char *begin = nullptr;
  char *end = nullptr;
  quint32 used = 0;
  quint32 capacity = 0;
  void *freeHead = nullptr;
  Chunk *previous = nullptr;
  Chunk *next = nullptr;
  AddressIndex::iterator indexEntry;
};

namespace {

void *linkOf(const void *block) {
  void *next = nullptr;
  std::memcpy(static_cast<void *>(&next), block, sizeof next);
  return next;
}

void setLink(void *block, void *next) {
  std::memcpy(block, static_cast<void *>(&next), sizeof next);
}

quint32 roundedUpTo4(quint32 size) {
  return (size + 3U) & ~3U;
}

}  // namespace

ZemMemGeometry ZemMemGeometry::of(quint32 blockSize, quint32 requestedCount) {
  const quint32 total = blockSize * requestedCount + ZemMemMgr::kChunkHeaderSize;
  const quint32 below = std::bit_floor(total);
  const quint32 above = 2U * below;
  const quint32 power = total - below > above - total ? above : below;
  const quint32 chunk = power - 4U;
  const bool holdsBlocks = chunk > ZemMemMgr::kChunkHeaderSize && blockSize != 0;
  return {blockSize, chunk, holdsBlocks ? (chunk - ZemMemMgr::kChunkHeaderSize) / blockSize : 0U};
}

ZemMemMgr::ZemMemMgr(quint32 blockSize, std::string name, quint32 requestedCount)
    : name_(std::move(name)),
      geometry_(ZemMemGeometry::of(roundedUpTo4(std::max(blockSize, 8U)), requestedCount)) {
  static_assert(sizeof(Chunk) == kChunkHeaderSize);
}

ZemMemMgr::~ZemMemMgr() {
  for (const auto &entry : byAddress_) {
    heapFree(entry.second);
  }
}

void *ZemMemMgr::allocate() {
  if (geometry_.blocksPerChunk == 0) {
    return heapAllocate(geometry_.blockSize);
  }
  if (current_ == nullptr || !hasFreeBlock(*current_)) {
    // Without a chunk to go on with there is no current one either: the full one stands in the list
    // of full chunks now, and a release must find it there.
    current_ = chunkWithSpace();
    current_ = current_ != nullptr ? current_ : addChunk();
  }
  return popBlock(*current_);
}

void ZemMemMgr::freeMem(void *block) {
  Chunk *chunk = current_ != nullptr && owns(*current_, block) ? current_ : findOwner(block);
  if (chunk == nullptr) {
    std::cout << "ZemMemMgr::freeMem - freeing buffer @" << block << " outside of memory pools."
              << std::endl;
    heapFree(block);
    return;
  }
  if (isFull(*chunk)) {
    unlink(*chunk);
    link(freeSpace_, *chunk);
  }
  pushBlock(*chunk, block);
  if (chunk->used < 1 && chunkCount_ >= 2) {
    releaseChunk(*chunk);
    current_ = freeSpace_.head;
  } else {
    current_ = chunk;
  }
}

void ZemMemMgr::freeFast(void *block) {
  if (current_ != nullptr && owns(*current_, block) && current_->used != 1) {
    pushBlock(*current_, block);
  } else {
    freeMem(block);
  }
}

quint32 ZemMemMgr::usedBlocks() const {
  quint32 used = 0;
  for (const auto &entry : byAddress_) {
    used += entry.second->used;
  }
  return used;
}

bool ZemMemMgr::hasFreeBlock(const Chunk &chunk) {
  return chunk.freeHead != nullptr;
}

bool ZemMemMgr::isFull(const Chunk &chunk) {
  return chunk.freeHead == nullptr;
}

bool ZemMemMgr::owns(const Chunk &chunk, const void *block) {
  const char *address = static_cast<const char *>(block);
  return !std::less<>()(address, static_cast<const char *>(chunk.begin)) &&
         std::less<>()(address, static_cast<const char *>(chunk.end));
}

void *ZemMemMgr::popBlock(Chunk &chunk) {
  void *block = chunk.freeHead;
  chunk.freeHead = linkOf(block);
  ++chunk.used;
  return block;
}

void ZemMemMgr::pushBlock(Chunk &chunk, void *block) {
  setLink(block, chunk.freeHead);
  chunk.freeHead = block;
  --chunk.used;
}

void ZemMemMgr::link(ChunkList &list, Chunk &chunk) {
  chunk.previous = nullptr;
  chunk.next = list.head;
  if (list.head != nullptr) {
    list.head->previous = &chunk;
  }
  list.head = &chunk;
}

// A chunk that filled up stays in the free-space list until an allocation passes it, so either list
// may hold it.
void ZemMemMgr::unlink(Chunk &chunk) {
  if (chunk.previous != nullptr) {
    chunk.previous->next = chunk.next;
  } else if (freeSpace_.head == &chunk) {
    freeSpace_.head = chunk.next;
  } else {
    full_.head = chunk.next;
  }
  if (chunk.next != nullptr) {
    chunk.next->previous = chunk.previous;
  }
}

ZemMemMgr::Chunk *ZemMemMgr::findOwner(const void *block) const {
  auto after = byAddress_.upper_bound(static_cast<const char *>(block));
  if (after == byAddress_.begin()) {
    return nullptr;
  }
  Chunk *chunk = std::prev(after)->second;
  return owns(*chunk, block) ? chunk : nullptr;
}

// Moves full chunks out of the way and returns the first one with a free block, or null.
ZemMemMgr::Chunk *ZemMemMgr::chunkWithSpace() {
  if (current_ != nullptr && current_ != freeSpace_.head) {
    unlink(*current_);
    link(full_, *current_);
  }
  while (freeSpace_.head != nullptr && isFull(*freeSpace_.head)) {
    Chunk &chunk = *freeSpace_.head;
    unlink(chunk);
    link(full_, chunk);
  }
  return freeSpace_.head;
}

ZemMemMgr::Chunk *ZemMemMgr::addChunk() {
  auto *memory = static_cast<char *>(heapAllocate(geometry_.chunkSize));
  char *begin = memory + kChunkHeaderSize;
  char *end = begin + std::size_t{geometry_.blockSize} * geometry_.blocksPerChunk;
  auto *chunk =
      new (memory) Chunk{begin, end, 0, geometry_.blocksPerChunk, nullptr, nullptr, nullptr, {}};
  try {
    chunk->indexEntry = byAddress_.emplace(begin, chunk).first;
  } catch (const std::bad_alloc &) {
    heapFree(memory);
    throw;
  }
  threadBlocks(*chunk);
  link(freeSpace_, *chunk);
  ++chunkCount_;
  return chunk;
}

// Backwards, so that the block at the lowest address is handed out first.
void ZemMemMgr::threadBlocks(Chunk &chunk) const {
  for (char *block = chunk.end; block != chunk.begin;) {
    block -= geometry_.blockSize;
    setLink(block, chunk.freeHead);
    chunk.freeHead = block;
  }
}

void ZemMemMgr::releaseChunk(Chunk &chunk) {
  unlink(chunk);
  byAddress_.erase(chunk.indexEntry);
  --chunkCount_;
  heapFree(&chunk);
}

}  // namespace corvane
