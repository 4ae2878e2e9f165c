// A device error at will: preloaded into a run, this stands in for read(), which fails for good
// once it has given CORVANE_FAILING_READ_AFTER bytes of the file CORVANE_FAILING_READ.

// Fortified, read() has a body in its header.
#undef _FORTIFY_SOURCE

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace {

bool isTheFile(int descriptor) {
  const char *name = std::getenv("CORVANE_FAILING_READ");
  struct stat file {};
  struct stat read {};
  return name != nullptr && stat(name, &file) == 0 && fstat(descriptor, &read) == 0 &&
         file.st_dev == read.st_dev && file.st_ino == read.st_ino;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) ssize_t read(int descriptor, void *buffer,
                                                               size_t size) {
  static const char *const after = std::getenv("CORVANE_FAILING_READ_AFTER");
  static size_t left = after != nullptr ? std::strtoul(after, nullptr, 10) : 0;
  if (!isTheFile(descriptor)) {
    return syscall(SYS_read, descriptor, buffer, size);
  }
  if (left == 0) {
    errno = EIO;
    return -1;
  }
  const ssize_t count = syscall(SYS_read, descriptor, buffer, std::min(size, left));
  left -= count > 0 ? static_cast<size_t>(count) : 0;
  return count;
}
