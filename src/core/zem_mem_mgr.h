#pragma once

#include <QtGlobal>
#include <cstddef>
#include <map>
#include <string>

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

// How a pool cuts its chunks. All sizes are bytes, all arithmetic is 32 bits wide.
struct ZemMemGeometry {
  quint32 blockSize = 0;
  quint32 chunkSize = 0;
  quint32 blocksPerChunk = 0;

  // The chunk is the power of two nearest to what was asked for, less 4 (the heap's own word);
  // blockSize is taken as it stands. A count that makes the total a power of two yields one block
  // fewer than asked for.
  static ZemMemGeometry of(quint32 blockSize, quint32 requestedCount);
};

// A pool of blocks of one size, cut from large chunks.
//
// Allocation and release cost constant time, except that releasing a block of another chunk than
// the last one used searches the chunks by address (logarithmic in their number). The pool owns its
// chunks and frees them when it is destroyed; blocks still in use die with them.
class ZemMemMgr {
 public:
  // Bytes at the start of every chunk.
  static constexpr quint32 kChunkHeaderSize = 56;

  // blockSize is raised to 8 and rounded up to a multiple of 4.
  ZemMemMgr(quint32 blockSize, std::string name, quint32 requestedCount);
  ZemMemMgr(const ZemMemMgr &) = delete;
  ZemMemMgr &operator=(const ZemMemMgr &) = delete;
  ~ZemMemMgr();

  // One block of blockSize() bytes; throws std::bad_alloc. A pool whose geometry leaves no block in
  // a chunk answers with plain heap.
  void *allocate();

  // Takes a block back. A block that no chunk owns is reported on standard output and released to
  // the plain heap. The last block of a chunk releases the chunk, unless it is the only one.
  void freeMem(void *block);

  // As freeMem, but by the short way where the block lies in the current chunk and is not its last.
  void freeFast(void *block);

  const std::string &name() const { return name_; }
  void extendName(const std::string &further) { name_ += ":" + further; }
  quint32 blockSize() const { return geometry_.blockSize; }
  quint32 blocksPerChunk() const { return geometry_.blocksPerChunk; }
  quint32 chunkSize() const { return geometry_.chunkSize; }
  quint32 chunkCount() const { return chunkCount_; }
  // Blocks handed out and not yet taken back; walks the chunks.
  quint32 usedBlocks() const;

 private:
  struct Chunk;
  struct ChunkList {
    Chunk *head = nullptr;
  };
  using AddressIndex = std::map<const char *, Chunk *>;

  static bool hasFreeBlock(const Chunk &chunk);
  static bool isFull(const Chunk &chunk);
  static bool owns(const Chunk &chunk, const void *block);
  static void *popBlock(Chunk &chunk);
  static void pushBlock(Chunk &chunk, void *block);
  static void link(ChunkList &list, Chunk &chunk);
  void unlink(Chunk &chunk);
  Chunk *findOwner(const void *block) const;
  Chunk *chunkWithSpace();
  Chunk *addChunk();
  void threadBlocks(Chunk &chunk) const;
  void releaseChunk(Chunk &chunk);

  std::string name_;
  ZemMemGeometry geometry_;
  quint32 chunkCount_ = 0;
  Chunk *current_ = nullptr;
  ChunkList freeSpace_;
  ChunkList full_;
  AddressIndex byAddress_;
};

}  // namespace corvane
