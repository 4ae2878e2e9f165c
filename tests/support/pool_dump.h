#pragma once

#include <sstream>
#include <string>

#include "core/zem_mem_mgr.h"

namespace corvane::support {

// "{name}: {blocks} blocks of {size} in {chunk size}; {chunks} chunks, {used} used".
inline std::string dump(const ZemMemMgr &pool) {
  std::ostringstream out;
  out << pool.name() << ": " << pool.blocksPerChunk() << " blocks of " << pool.blockSize() << " in "
      << pool.chunkSize() << "; " << pool.chunkCount() << " chunks, " << pool.usedBlocks()
      << " used";
  return out.str();
}

}  // namespace corvane::support
