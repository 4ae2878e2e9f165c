#include "core/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <sstream>

#include "core/fatal.h"
#include "core/messages.h"
#include "support/stream_capture.h"
#include "support/terminal.h"

namespace corvane {
namespace {

using support::StandardErrorOn;
using support::Terminal;

// A clock that stands still until the test moves it on.
class TestClock {
 public:
  ProgressLine::Clock clock() {
    return [this] { return now_; };
  }
  void passInterval() { now_ += std::chrono::milliseconds(300); }

 private:
  std::chrono::steady_clock::time_point now_;
};

TEST(ProgressLine, IsSilentWhereStandardErrorIsNoTerminal) {
  const support::StreamCapture errors(std::cerr);
  const int nowhere = open("/dev/null", O_WRONLY);
  {
    const StandardErrorOn redirected(nowhere);
    TestClock time;
    ProgressLine progress(time.clock());
    time.passInterval();
    progress.show([] { return "never asked for"; });
    progress.finish();
  }
  close(nowhere);
  EXPECT_EQ(errors.text(), "");
}

class ProgressLineOnATerminal : public testing::Test {
 protected:
  void SetUp() override {
    if (terminal_.file() < 0) {
      GTEST_SKIP() << "no terminal can be made here";
    }
    terminal_.setColumns(30);
  }

  // What is written when the line is due.
  std::string shown(const std::string &text) {
    time_.passInterval();
    progress_.show([&] { return text; });
    return errors_.take();
  }

  Terminal terminal_;
  std::streambuf *standardError_ = std::cerr.rdbuf();
  support::StreamCapture errors_{std::cerr};
  StandardErrorOn redirected_{terminal_.file()};
  TestClock time_;
  ProgressLine progress_{time_.clock()};
};

TEST_F(ProgressLineOnATerminal, IsRewrittenInPlaceAFewTimesASecondAndClearedAtTheEnd) {
  progress_.show([] { return "too early"; });
  EXPECT_EQ(errors_.take(), "");
  EXPECT_EQ(shown("Grade G1"), "\rGrade G1, 0 s");
  progress_.show([] { return "too early again"; });
  EXPECT_EQ(errors_.take(), "");
  EXPECT_EQ(shown("G2"), "\rG2, 0 s      ");
  EXPECT_EQ(shown("G2"), "\rG2, 0 s");
  progress_.finish();
  EXPECT_EQ(errors_.take(), "\r       \r");
  progress_.finish();
  EXPECT_EQ(errors_.take(), "");
}

TEST_F(ProgressLineOnATerminal, IsClearedBeforeAnythingIsSaid) {
  shown("Grade G1");
  const std::string cleared = "\r" + std::string(13, ' ') + "\r";
  const support::StreamCapture out(std::cout);
  std::ostringstream log;
  tell(std::cerr, log, "Timed out.");
  EXPECT_EQ(errors_.take(), cleared + "Timed out.\n");
  shown("Grade G1");
  tell(std::cout, log, "Timed out.");
  EXPECT_EQ(errors_.take(), cleared);
  tell(std::cout, log, "Timed out.");
  EXPECT_EQ(errors_.take(), "");
}

TEST_F(ProgressLineOnATerminal, IsClearedBeforeTheEndOfTheRun) {
  const std::string cleared = "\r" + std::string(13, ' ') + "\r";
  const auto on = [this](void (*end)()) {
    // Death tests read what goes to the descriptor.
    std::cerr.rdbuf(standardError_);
    shown("Grade G1");
    end();
  };
  EXPECT_EXIT(on([] { endRunOn(std::cerr, "Error: X."); }), testing::ExitedWithCode(1),
              testing::HasSubstr(cleared + "Error: X.\n"));
  EXPECT_EXIT(on([] { endRunOutOfMemory(); }), testing::ExitedWithCode(1),
              testing::HasSubstr(cleared + "Error: Out of memory.\n"));
}

TEST_F(ProgressLineOnATerminal, IsNoWiderThanTheTerminal) {
  EXPECT_EQ(shown(std::string(40, 'x')), "\r" + std::string(29, 'x'));
  EXPECT_EQ(shown(std::string(24, 'x')), "\r" + std::string(24, 'x') + ", 0 s");
  terminal_.setColumns(10);
  EXPECT_EQ(shown("G2"), "\rG2, 0 s  ");
  EXPECT_EQ(shown("Grade G2"), "\rGrade G2,");
}

TEST_F(ProgressLineOnATerminal, TakesWideLettersForTwoColumnsAndShowsNothingThatMovesTheCursor) {
  terminal_.setColumns(11);
  EXPECT_EQ(shown("紙紙紙紙紙紙"), "\r紙紙紙紙紙");
  EXPECT_EQ(shown("a\tb\x1B[2J\n"), "\ra?b?[2J?, ");
}

TEST_F(ProgressLineOnATerminal, OfUnknownWidthIsCutTo80Columns) {
  terminal_.setColumns(0);
  EXPECT_EQ(shown(std::string(90, 'x')), "\r" + std::string(79, 'x'));
}

}  // namespace
}  // namespace corvane
