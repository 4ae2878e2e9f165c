#pragma once

#include <string>

namespace corvane {

// An advisory, exclusive lock on a file, held as long as this lives and the process runs. It keeps
// out whoever asks for the same lock, and nobody else.
class FileLock {
 public:
  FileLock() = default;
  FileLock(const FileLock &) = delete;
  FileLock &operator=(const FileLock &) = delete;
  ~FileLock();

  // Locks the named file, which is made where there is none; what it holds stays. False when it
  // cannot be opened for writing, and when somebody else holds the lock. What is no regular file,
  // and a file on a system without locks, needs none. REQUIRES that nothing is locked yet.
  bool acquire(const std::string &name);

 private:
  int descriptor_ = -1;
};

}  // namespace corvane
