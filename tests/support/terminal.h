#pragma once

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace corvane::support {

// Puts another file in the place of standard error for as long as it lives.
class StandardErrorOn {
 public:
  explicit StandardErrorOn(int file) : old_(dup(STDERR_FILENO)) { dup2(file, STDERR_FILENO); }
  StandardErrorOn(const StandardErrorOn &) = delete;
  StandardErrorOn &operator=(const StandardErrorOn &) = delete;
  ~StandardErrorOn() {
    dup2(old_, STDERR_FILENO);
    close(old_);
  }

 private:
  int old_;
};

// A terminal that nobody looks at; file() is negative where none can be made.
class Terminal {
 public:
  Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
    if (master_ >= 0 && grantpt(master_) == 0 && unlockpt(master_) == 0) {
      slave_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
    }
  }
  Terminal(const Terminal &) = delete;
  Terminal &operator=(const Terminal &) = delete;
  ~Terminal() {
    close(slave_);
    close(master_);
  }
  int file() const { return slave_; }
  std::string name() const { return ptsname(master_); }
  void setColumns(unsigned short columns) const {
    const struct winsize size = {24, columns, 0, 0};
    ioctl(slave_, TIOCSWINSZ, &size);
  }

 private:
  int master_;
  int slave_ = -1;
};

}  // namespace corvane::support
