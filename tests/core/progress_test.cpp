#include "core/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <thread>

#include "support/stream_capture.h"
#include "support/terminal.h"

namespace corvane {
namespace {

using support::StandardErrorOn;
using support::Terminal;

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
