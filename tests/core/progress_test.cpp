#include "core/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <thread>

#include "support/stream_capture.h"

namespace corvane {
namespace {

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

 private:
  int master_;
  int slave_ = -1;
};

constexpr auto kBeyondTheInterval = std::chrono::milliseconds(300);

TEST(ProgressLine, IsSilentWhereStandardErrorIsNoTerminal) {
  const support::StreamCapture errors(std::cerr);
  const int nowhere = open("/dev/null", O_WRONLY);
  {
    const StandardErrorOn redirected(nowhere);
    ProgressLine progress;
    std::this_thread::sleep_for(kBeyondTheInterval);
    progress.show([] { return "never asked for"; });
    progress.finish();
  }
  close(nowhere);
  EXPECT_EQ(errors.text(), "");
}

TEST(ProgressLine, IsRewrittenInPlaceOnATerminalAndClearedAtTheEnd) {
  const Terminal terminal;
  if (terminal.file() < 0) {
    GTEST_SKIP() << "no terminal can be made here";
  }
  support::StreamCapture errors(std::cerr);
  const StandardErrorOn redirected(terminal.file());
  ProgressLine progress;
  progress.show([] { return "too early"; });
  EXPECT_EQ(errors.take(), "");
  std::this_thread::sleep_for(kBeyondTheInterval);
  progress.show([] { return "Grade G1"; });
  EXPECT_THAT(errors.take(), testing::MatchesRegex("\rGrade G1, [0-9]+ s"));
  progress.show([] { return "too early again"; });
  EXPECT_EQ(errors.take(), "");
  std::this_thread::sleep_for(kBeyondTheInterval);
  progress.show([] { return "G2"; });
  EXPECT_THAT(errors.take(), testing::MatchesRegex("\rG2, [0-9]+ s *"));
  progress.finish();
  EXPECT_THAT(errors.take(), testing::MatchesRegex("\r +\r"));
  progress.finish();
  EXPECT_EQ(errors.take(), "");
}

}  // namespace
}  // namespace corvane
