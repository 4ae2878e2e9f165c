#include "scenarios/scenario_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace corvane::scenarios {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

// A scenario folder of its own and a program that is a shell script.
class ScenarioRunner : public testing::Test {
 protected:
  void SetUp() override { Write("claim/data/orders.data", "order\n"); }
  void Write(const std::string &name, const std::string &bytes) {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name, std::ios::binary) << bytes;
  }

  Outcome PerformScript(const std::string &script, int seconds = 60) {
    Write("program", "#!/bin/sh\n" + script);
    fs::permissions(root_ / "program", fs::perms::owner_all);
    return Perform({root_ / "claim", root_ / "work", root_ / "program", seconds});
  }

  support::TemporaryFolder folder_;
  fs::path root_ = folder_.path();
};

TEST_F(ScenarioRunner, GathersStatusChannelsAndChangedFiles) {
  EXPECT_THAT(PerformScript("echo out; echo err >&2; cat data/orders.data > data/CV.imp\n"
                            "echo more >> data/orders.data; echo x > beside; exit 3\n"),
              ElementsAre(Pair("CV.imp", "order\n"), Pair("beside", "x\n"), Pair("exit", "3\n"),
                          Pair("orders.data", "order\nmore\n"), Pair("stderr", "err\n"),
                          Pair("stdout", "out\n")));
}

TEST_F(ScenarioRunner, SetsTheLinesOfEnv) {
  Write("claim/env", "ZEM_CVN_PARAM=a b=c\nCORVANE_X=\n");
  EXPECT_EQ(PerformScript("echo \"$ZEM_CVN_PARAM,${CORVANE_X-unset}\"").at("stdout"), "a b=c,\n");
}

TEST_F(ScenarioRunner, HidesWhatSteersTheProgram) {
  ASSERT_EQ(setenv("CORVANE_OUTSIDE", "1", 1), 0);
  EXPECT_EQ(PerformScript("echo \"${CORVANE_OUTSIDE-unset}\"").at("stdout"), "unset\n");
  ASSERT_EQ(unsetenv("CORVANE_OUTSIDE"), 0);
}

TEST_F(ScenarioRunner, TellsACrashAndARunWithoutEnd) {
  EXPECT_EQ(PerformScript("kill -SEGV $$").at("exit"), "crash\n");
  EXPECT_EQ(PerformScript("exec sleep 60", 0).at("exit"), "timeout\n");
}

TEST_F(ScenarioRunner, RefusesAProgramThatIsNotThere) {
  EXPECT_THROW(Perform({root_ / "claim", root_ / "work", root_ / "nothing"}), std::runtime_error);
}

TEST_F(ScenarioRunner, ApprovedOutcomesComeBack) {
  const Outcome outcome = {{"exit", "0\n"}, {"CV.imp", ""}, {"sub/file", "a\0b"}};
  Write("claim/expected/stale", "");
  WriteExpected(root_ / "claim", outcome);
  EXPECT_EQ(ReadExpected(root_ / "claim"), outcome);
}

TEST(ScenarioDifferences, NoneBetweenEqualOutcomes) {
  EXPECT_THAT(Differences({{"exit", "0\n"}}, {{"exit", "0\n"}}), IsEmpty());
}

TEST(ScenarioDifferences, ShowTheFirstDifferingLine) {
  EXPECT_THAT(Differences({{"log", "a\nb\nc\n"}}, {{"log", "a\nx\nc\n"}}),
              ElementsAre("log: differs (- expected, + actual)\n"
                          "  2 - b\n  3 - c\n  2 + x\n  3 + c\n"));
}

TEST(ScenarioDifferences, ShowAMissingEndAndLineBreak) {
  EXPECT_THAT(Differences({{"log", "a\nb\n"}}, {{"log", "a\n"}}),
              ElementsAre(HasSubstr("  2 - b\n  2 + <end>\n")));
  EXPECT_THAT(Differences({{"log", "a\n"}}, {{"log", "a"}}),
              ElementsAre(HasSubstr("  1 - a\n  1 + a<no line break>\n")));
}

TEST(ScenarioDifferences, NameFilesOfOneSide) {
  EXPECT_THAT(Differences({{"CV.imp", ""}}, {{"stray", "x\n"}}),
              ElementsAre(HasSubstr("CV.imp: expected"), HasSubstr("stray: written by the run")));
}

TEST(ScenarioTimes, AreMaskedInBannersOnly) {
  EXPECT_EQ(MaskTimes("**** Start Corvane. 2024/02/29 23:59:59 ****\n2024/02/29 23:59:59\n"),
            "**** Start Corvane. YYYY/MM/DD HH:MM:SS ****\n2024/02/29 23:59:59\n");
}

}  // namespace
}  // namespace corvane::scenarios
