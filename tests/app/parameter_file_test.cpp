#include "app/parameter_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "support/temporary_folder.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using support::TemporaryFolder;

class TheParameterFile : public testing::Test {
 protected:
  void TearDown() override { unsetenv("ZEM_CVN_PARAM"); }

  // What is said of the file, which has a name of its own.
  std::string read(const std::string &bytes) {
    name_ = folder_.write("parameters", bytes);
    std::ostringstream messages;
    EXPECT_TRUE(readParameters(parameters_, name_, messages));
    return messages.str();
  }

  TemporaryFolder folder_;
  std::string name_;
  RunParameters parameters_;
};

TEST_F(TheParameterFile, HasTheNameOfTheEnvironmentVariableOrElseTheDefault) {
  EXPECT_EQ(parameterFileName(), "data\\Parameters.data");
  setenv("ZEM_CVN_PARAM", "some where/p", 1);
  EXPECT_EQ(parameterFileName(), "some where/p");
  setenv("ZEM_CVN_PARAM", "", 1);
  EXPECT_EQ(parameterFileName(), "");
}

TEST_F(TheParameterFile, HasANameOf511CharactersAtMost) {
  setenv("ZEM_CVN_PARAM", std::string(511, 'x').c_str(), 1);
  EXPECT_EQ(parameterFileName().size(), 511U);
  setenv("ZEM_CVN_PARAM", std::string(600, 'x').c_str(), 1);
  EXPECT_EQ(parameterFileName(), std::string(511, 'x'));
}

TEST_F(TheParameterFile, ThatCannotBeOpenedOrReadIsToldWithoutAWord) {
  std::ostringstream messages;
  for (const std::string &name : {folder_.file("nothing"), folder_.path().string(), std::string(),
                                  std::string("/proc/self/mem")}) {
    EXPECT_FALSE(readParameters(parameters_, name, messages)) << name;
  }
  EXPECT_EQ(messages.str(), "");
}

TEST_F(TheParameterFile, ThatIsEmptyLeavesTheDefaults) {
  EXPECT_EQ(read(""), "");
  EXPECT_EQ(parameters_.occurMin, 1);
  EXPECT_EQ(parameters_.logFile, "data\\corvane.log");
}

TEST_F(TheParameterFile, SetsEachLineWithKeyAndValue) {
  EXPECT_EQ(read("occur min=4\nlog file=my log\r\nsolver=Barrier\n"), "");
  EXPECT_EQ(parameters_.occurMin, 4);
  EXPECT_EQ(parameters_.logFile, "my log");
  EXPECT_EQ(parameters_.solver, "Barrier");
}

TEST_F(TheParameterFile, TakesTheLastValidValueOfAKey) {
  EXPECT_EQ(read("occur min=4\noccur min=6\noccur min=-2\n"), "");
  EXPECT_EQ(parameters_.occurMin, 6);
}

TEST_F(TheParameterFile, SkipsCommentsThatBeginInTheFirstColumnOnly) {
  EXPECT_EQ(read("#occur min=4\n# more\n #occur min=5\n"), "Unknown Parameter:  #occur min = 5\n");
  EXPECT_EQ(parameters_.occurMin, 1);
}

TEST_F(TheParameterFile, SkipsLinesWithoutAKeyOrAValueInSilence) {
  EXPECT_EQ(read("\noccur min\noccur min=\n====\n=7\n"), "");
  EXPECT_EQ(parameters_.occurMin, 1);
}

TEST_F(TheParameterFile, SkipsLeadingEqualSignsAndIgnoresTheTextAfterTheSecondRun) {
  EXPECT_EQ(read("==occur min==4==5\n"), "");
  EXPECT_EQ(parameters_.occurMin, 4);
}

TEST_F(TheParameterFile, CutsALogFileNameAtASecondEqualSign) {
  EXPECT_EQ(read("log file=a=b\n"), "");
  EXPECT_EQ(parameters_.logFile, "a");
}

TEST_F(TheParameterFile, TrimsNothing) {
  EXPECT_EQ(read("occur min = 4\nlog file= a \n"), "Unknown Parameter: occur min  =  4\n");
  EXPECT_EQ(parameters_.logFile, " a ");
}

TEST_F(TheParameterFile, TellsUnknownKeysAndReadsOn) {
  EXPECT_EQ(read("Occur Min=4\nfoo=bar\noccur min=3\n"),
            "Unknown Parameter: Occur Min = 4\nUnknown Parameter: foo = bar\n");
  EXPECT_EQ(parameters_.occurMin, 3);
}

TEST_F(TheParameterFile, TellsUnknownKeysInUtf8WhateverTheyAreIn) {
  EXPECT_EQ(read("gr\xFC\xDF=1\ngr\xC3\xBC\xC3\x9F=2\n"),
            "Unknown Parameter: gr\xC3\xBC\xC3\x9F = 1\nUnknown Parameter: gr\xC3\xBC\xC3\x9F = "
            "2\n");
}

TEST_F(TheParameterFile, IgnoresALastLineWithoutALineBreak) {
  EXPECT_EQ(read("occur min=4\noccur min=9"), "");
  EXPECT_EQ(parameters_.occurMin, 4);
  EXPECT_EQ(read("foo=bar"), "");
}

TEST_F(TheParameterFile, DropsOneCarriageReturnBeforeALineBreakOnly) {
  EXPECT_EQ(read("occur min=4\r\nlog file=a\rb\r\r\n"), "");
  EXPECT_EQ(parameters_.occurMin, 4);
  EXPECT_EQ(parameters_.logFile, "a\rb\r");
}

TEST_F(TheParameterFile, EndsALineAtANulByte) {
  EXPECT_EQ(read("occur min=4\0 5\noccur\0 min=6\nlog file=a\0b\n"s), "");
  EXPECT_EQ(parameters_.occurMin, 4);
  EXPECT_EQ(parameters_.logFile, "a");
}

TEST_F(TheParameterFile, KnowsItsFirstKeyBehindAByteOrderMarkAndNoOther) {
  EXPECT_EQ(read("\xEF\xBB\xBFoccur min=4\n\xEF\xBB\xBFoccur min=5\n"),
            "Unknown Parameter: \xEF\xBB\xBFoccur min = 5\n");
  EXPECT_EQ(parameters_.occurMin, 4);
}

TEST_F(TheParameterFile, SkipsALineThatIsTooLongWithAWarning) {
  std::string longest = "log file=";
  longest.append(1014, 'x');
  ASSERT_EQ(longest.size(), 1023U);
  EXPECT_EQ(read(longest + "\n"), "");
  EXPECT_EQ(parameters_.logFile.size(), 1014);
  EXPECT_EQ(read("occur min=2\n" + longest + "y\noccur min=3\n"),
            "Warning: Line 2 of " + name_ + " is too long.\n");
  EXPECT_EQ(parameters_.logFile.size(), 1014);
  EXPECT_EQ(parameters_.occurMin, 3);
  longest.append(1000000, 'x');
  EXPECT_EQ(read(longest + "\noccur min=4\n"), "Warning: Line 1 of " + name_ + " is too long.\n");
  EXPECT_EQ(parameters_.occurMin, 4);
}

}  // namespace
}  // namespace corvane
