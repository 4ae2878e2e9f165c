#include "core/line_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "support/temporary_folder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TextFile : public testing::Test {
 protected:
  bool read(const std::string &name) {
    lines_.clear();
    std::ifstream file;
    const bool whole = readLines(file, name, [this](LineReader &line, LineReader::Status status) {
      const bool isEnd = status == LineReader::Status::kEnd;
      lines_.push_back(std::to_string(line.number()) + (isEnd ? " end " : " ") + line.text());
    });
    EXPECT_FALSE(file.is_open());
    return whole;
  }

  support::TemporaryFolder folder_;
  std::vector<std::string> lines_;
};

TEST_F(TextFile, HandsOverEveryLineAndTheRest) {
  EXPECT_TRUE(read(folder_.write("file", "a\n\nb")));
  EXPECT_THAT(lines_, ElementsAre("1 a", "2 ", "3 end b"));
  EXPECT_TRUE(read(folder_.write("empty", "")));
  EXPECT_THAT(lines_, ElementsAre("1 end "));
}

TEST_F(TextFile, ThatCannotBeOpenedHandsOverNothing) {
  EXPECT_FALSE(read(folder_.file("absent")));
  EXPECT_FALSE(read(folder_.path().string()));
  EXPECT_THAT(lines_, IsEmpty());
}

// It opens, but nothing is there at its first address.
TEST_F(TextFile, WhoseFirstReadFailsHandsOverNothing) {
  EXPECT_FALSE(read("/proc/self/mem"));
  EXPECT_THAT(lines_, IsEmpty());
}

}  // namespace
}  // namespace corvane
