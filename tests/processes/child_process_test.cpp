#include "processes/child_process.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace corvane {
namespace {

class RunChild : public testing::Test {
 protected:
  ChildEnd shell(const std::string &script) {
    request_.words = {"sh", "-c", script};
    request_.output = path("out");
    request_.error = path("err");
    return runChild(request_);
  }
  std::string path(const char *name) const { return folder_.filePath(name).toStdString(); }
  std::string content(const char *name) const {
    QFile file(folder_.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(no file)";
  }

  QTemporaryDir folder_;
  ChildRequest request_;
};

TEST_F(RunChild, KeepsWhatTheChildSaysAndHowItEnds) {
  const ChildEnd end = shell("echo out; echo err >&2; exit 3");
  EXPECT_TRUE(end.started && end.exited);
  EXPECT_EQ(end.status, 3);
  EXPECT_FALSE(end.isGood());
  EXPECT_EQ(content("out"), "out\n");
  EXPECT_EQ(content("err"), "err\n");
}

TEST_F(RunChild, KeepsAllThatTheChildSaysInOneFile) {
  const QString log = folder_.filePath("log");
  const ChildRequest request =
      loggedRequest({"sh", "-c", "echo out; echo err >&2; echo more"}, log);
  EXPECT_TRUE(runChild(request).isGood());
  EXPECT_EQ(content("log"), "out\nerr\nmore\n");
}

TEST_F(RunChild, TellsASignalFromAnExit) {
  const ChildEnd end = shell("kill -KILL $$");
  EXPECT_TRUE(end.started);
  EXPECT_FALSE(end.exited);
  EXPECT_EQ(end.status, 9);
}

TEST_F(RunChild, StartsTheChildInItsFolder) {
  request_.folder = folder_.path().toStdString();
  EXPECT_TRUE(shell("pwd").isGood());
  EXPECT_EQ(content("out"), folder_.path().toStdString() + "\n");
}

TEST_F(RunChild, TakesAVariableAwayAndLeavesTheOthers) {
  setenv("CORVANE_TEST_GONE", "1", 1);
  setenv("CORVANE_TEST_GONE_NOT", "1", 1);
  request_.withoutVariable = "CORVANE_TEST_GONE";
  shell("echo ${CORVANE_TEST_GONE-none} ${CORVANE_TEST_GONE_NOT-none}");
  EXPECT_EQ(content("out"), "none 1\n");
}

TEST_F(RunChild, GivesTheChildItsInput) {
  QFile file(folder_.filePath("in"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("a line\n");
  file.close();
  request_.input = path("in");
  shell("cat");
  EXPECT_EQ(content("out"), "a line\n");
}

TEST_F(RunChild, SaysThatAProgramIsNotThere) {
  request_.words = {"corvane-no-such-program"};
  EXPECT_FALSE(runChild(request_).started);
}

}  // namespace
}  // namespace corvane
