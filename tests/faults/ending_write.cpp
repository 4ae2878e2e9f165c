// The end of a run at any moment: preloaded into a run, this stands in for write() and writev() and
// kills the process right before the CORVANE_KILLED_AT_WRITE-th of them. What a killed run leaves
// behind is what stood there before one of its writes. The number of all writes goes into the file
// CORVANE_WRITES at the end of a run that came so far.

#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill() is POSIX
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

long writes = 0;

void countWrite() {
  static const char *const last = std::getenv("CORVANE_KILLED_AT_WRITE");
  if (++writes == (last != nullptr ? std::strtol(last, nullptr, 10) : 0)) {
    kill(getpid(), SIGKILL);
  }
}

__attribute__((destructor)) void tellWrites() {
  if (const char *name = std::getenv("CORVANE_WRITES"); name != nullptr) {
    const std::string count = std::to_string(writes);
    const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    syscall(SYS_write, file, count.data(), count.size());
    close(file);
  }
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) ssize_t write(int descriptor, const void *bytes,
                                                     size_t size) {
  countWrite();
  return syscall(SYS_write, descriptor, bytes, size);
}

__attribute__((visibility("default"))) ssize_t writev(int descriptor, const iovec *parts,
                                                      int count) {
  countWrite();
  return syscall(SYS_writev, descriptor, parts, count);
}

}  // extern "C"
