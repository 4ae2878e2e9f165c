// Files that a run writes while something else is there: one of its own inputs, its other output,
// or another run.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <string>
#include <thread>

#include "mill_run.h"

namespace corvane::faults {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;

class MeetingPaths : public testing::Test {
 protected:
  void setParameter(const std::string &key, const std::string &value) const {
    mill_.write("Parameters.data", std::string(MillRun::kParameters) + key + "=" + value + "\n");
  }

  // The run ends with the words and leaves the file as it is.
  void expectRefused(const std::string &words, const fs::path &file) const {
    const std::string before = contentOf(file);
    const Result result = mill_.run();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, words + "\n");
    EXPECT_EQ(contentOf(file), before);
  }

  MillRun mill_;
};

TEST_F(MeetingPaths, ALogThatIsAnInputEndsTheRunBeforeAnythingIsAppended) {
  for (const std::string name : MillRun::kInputs) {
    SCOPED_TRACE(name);
    setParameter("log file", "data\\" + name);
    expectRefused("Could not open log file: data\\" + name, mill_.data(name));
    EXPECT_FALSE(exists(mill_.data("CV.imp")));
  }
}

TEST_F(MeetingPaths, AnImportFileThatIsAnInputEndsTheRunBeforeItIsEmptied) {
  for (const std::string name : MillRun::kInputs) {
    SCOPED_TRACE(name);
    setParameter("output", "data\\" + name);
    expectRefused("Could not open import file: data\\" + name, mill_.data(name));
    EXPECT_THAT(mill_.log(), EndsWith("Time Limit           : None\n"));
  }
}

TEST_F(MeetingPaths, FilesAreKnownByWhatTheyAreNotByTheirNames) {
  fs::create_hard_link(mill_.data("orders.data"), mill_.data("hard"));
  fs::create_symlink("orders.data", mill_.data("soft"));
  for (const std::string name : {"data/./orders.data", "data/hard", "data/soft"}) {
    SCOPED_TRACE(name);
    setParameter("log file", name);
    expectRefused("Could not open log file: " + name, mill_.data("orders.data"));
    setParameter("output", name);
    expectRefused("Could not open import file: " + name, mill_.data("orders.data"));
  }
}

TEST_F(MeetingPaths, ALogThatIsTheImportFileEndsTheRun) {
  setParameter("log file", "data\\CV.imp");
  expectRefused("Could not open log file: data\\CV.imp", mill_.data("CV.imp"));
  EXPECT_FALSE(exists(mill_.data("CV.imp")));
  mill_.write("CV.imp", "kept");
  expectRefused("Could not open log file: data\\CV.imp", mill_.data("CV.imp"));
}

// They keep nothing that could be read or overwritten.
TEST_F(MeetingPaths, LogAndImportFileMayBeOneDevice) {
  mill_.write("Parameters.data",
              std::string(MillRun::kParameters) + "log file=/dev/null\noutput=/dev/null\n");
  EXPECT_EQ(mill_.run().status, 0);
}

// Takes the lock of the file for as long as it lives; held() tells whether it was to be had.
class OtherRun {
 public:
  explicit OtherRun(const fs::path &file) : descriptor_(open(file.c_str(), O_WRONLY | O_CLOEXEC)) {
    held_ = flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
  }
  OtherRun(const OtherRun &) = delete;
  OtherRun &operator=(const OtherRun &) = delete;
  ~OtherRun() { close(descriptor_); }

  bool held() const { return held_; }

 private:
  int descriptor_;
  bool held_;
};

TEST_F(MeetingPaths, AnImportFileThatAnotherRunHoldsEndsTheRun) {
  mill_.write("CV.imp", "half of another run");
  {
    const OtherRun other(mill_.data("CV.imp"));
    ASSERT_TRUE(other.held());
    expectRefused("Could not open import file: data\\CV.imp", mill_.data("CV.imp"));
  }
  fs::remove(mill_.data("corvane.log"));
  expectWholeRun(mill_, mill_.run());
}

// The freight rates come through a pipe: while the run waits for them, it has emptied the file.
TEST_F(MeetingPaths, TheImportFileIsHeldBetweenItsTwoOpenings) {
  fs::remove(mill_.data("freightRates.data"));
  ASSERT_EQ(mkfifo(mill_.data("freightRates.data").c_str(), 0600), 0);
  std::atomic<bool> ended = false;
  std::thread meanwhile([&] {
    int pipe = -1;
    while (pipe < 0 && !ended) {
      std::this_thread::yield();
      pipe = open(mill_.data("freightRates.data").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    }
    EXPECT_FALSE(OtherRun(mill_.data("CV.imp")).held());
    close(pipe);
  });
  expectWholeRun(mill_, mill_.run());
  ended = true;
  meanwhile.join();
  EXPECT_TRUE(OtherRun(mill_.data("CV.imp")).held());
}

}  // namespace
}  // namespace corvane::faults
