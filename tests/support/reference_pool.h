#pragma once

#include <QtGlobal>
#include <list>
#include <vector>

namespace corvane::support {

// Where a block pool must take its blocks from, written step by step. Chunks are numbered in the
// order in which they are made, blocks by their place in the chunk; there is no memory behind them.
class ReferencePool {
 public:
  struct Place {
    std::size_t chunk;
    quint32 block;
  };

  explicit ReferencePool(quint32 blocksPerChunk) : blocksPerChunk_(blocksPerChunk) {}

  Place allocate() {
    if (current_ == kNone || isFull(current_)) {
      if (current_ != kNone) {
        move(current_, full_);
      }
      while (!freeSpace_.empty() && isFull(freeSpace_.front())) {
        move(freeSpace_.front(), full_);
      }
      current_ = freeSpace_.empty() ? makeChunk() : freeSpace_.front();
    }
    Chunk &chunk = chunks_[current_];
    const quint32 block = chunk.free.back();
    chunk.free.pop_back();
    return {current_, block};
  }

  void release(Place place) {
    if (isFull(place.chunk)) {
      move(place.chunk, freeSpace_);
    }
    chunks_[place.chunk].free.push_back(place.block);
    if (used(place.chunk) == 0 && chunkCount() >= 2) {
      freeSpace_.remove(place.chunk);
      chunks_[place.chunk].gone = true;
      current_ = freeSpace_.empty() ? kNone : freeSpace_.front();
    } else {
      current_ = place.chunk;
    }
  }

  // The short way of a record's release.
  void releaseFast(Place place) {
    if (place.chunk == current_ && used(current_) != 1) {
      chunks_[current_].free.push_back(place.block);
    } else {
      release(place);
    }
  }

  std::size_t chunksMade() const { return chunks_.size(); }
  std::size_t chunkCount() const {
    std::size_t count = 0;
    for (const Chunk &chunk : chunks_) {
      count += chunk.gone ? 0 : 1;
    }
    return count;
  }
  std::size_t usedBlocks() const {
    std::size_t count = 0;
    for (std::size_t at = 0; at < chunks_.size(); ++at) {
      count += chunks_[at].gone ? 0 : used(at);
    }
    return count;
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  struct Chunk {
    std::vector<quint32> free;  // the next to be handed out last
    bool gone = false;
  };

  bool isFull(std::size_t chunk) const { return chunks_[chunk].free.empty(); }
  std::size_t used(std::size_t chunk) const { return blocksPerChunk_ - chunks_[chunk].free.size(); }
  void move(std::size_t chunk, std::list<std::size_t> &to) {
    freeSpace_.remove(chunk);
    full_.remove(chunk);
    to.push_front(chunk);
  }
  std::size_t makeChunk() {
    Chunk chunk;
    for (quint32 block = blocksPerChunk_; block > 0; --block) {
      chunk.free.push_back(block - 1);
    }
    chunks_.push_back(chunk);
    freeSpace_.push_front(chunks_.size() - 1);
    return chunks_.size() - 1;
  }

  quint32 blocksPerChunk_;
  std::vector<Chunk> chunks_;
  std::list<std::size_t> freeSpace_;
  std::list<std::size_t> full_;
  std::size_t current_ = kNone;
};

}  // namespace corvane::support
