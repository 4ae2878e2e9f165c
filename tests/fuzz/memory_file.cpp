#include "memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include "check.h"

namespace corvane::fuzz {

MemoryFile::MemoryFile()
    : descriptor_(memfd_create("corvane_fuzz", MFD_CLOEXEC)),
      name_("/proc/self/fd/" + std::to_string(descriptor_)) {
  require(descriptor_ >= 0, "a file in memory");
}

MemoryFile::~MemoryFile() {
  close(descriptor_);
}

void MemoryFile::write(std::string_view bytes) {
  require(ftruncate(descriptor_, 0) == 0, "an empty file in memory");
  const ssize_t written = pwrite(descriptor_, bytes.data(), bytes.size(), 0);
  require(written == static_cast<ssize_t>(bytes.size()), "a whole file in memory");
}

}  // namespace corvane::fuzz
