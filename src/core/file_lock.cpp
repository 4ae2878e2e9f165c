#include "core/file_lock.h"

#include "core/files.h"

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace corvane {

#if defined(_WIN32)

FileLock::~FileLock() = default;

bool FileLock::acquire(const std::string & /*name*/) {
  return true;
}

#else

FileLock::~FileLock() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
}

bool FileLock::acquire(const std::string &name) {
  const std::filesystem::path path = pathOfFile(name);
  std::error_code error;
  if (std::filesystem::is_other(path, error)) {
    return true;
  }
  constexpr int kReadAndWriteForAll = 0666;
  descriptor_ = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kReadAndWriteForAll);
  if (descriptor_ < 0) {
    return false;
  }
  return flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

#endif

}  // namespace corvane
