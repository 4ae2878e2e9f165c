// Input files that open, and whose reading then fails: each ends the run like one that does not
// open, wherever the error comes. A part of a file makes no plan.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "mill_run.h"

namespace corvane::faults {
namespace {

namespace fs = std::filesystem;

struct Input {
  const char *name;
  const char *words;
};

std::ostream &operator<<(std::ostream &out, const Input &input) {
  return out << input.name;
}

class ReadError : public testing::TestWithParam<Input> {
 protected:
  fs::path file() const { return mill_.data(GetParam().name); }
  bool isParameterFile() const { return std::string(GetParam().name) == "Parameters.data"; }

  void expectUnopened(const Result &result) const {
    if (!isParameterFile()) {
      expectFatal(mill_, result, GetParam().words);
      return;
    }
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, std::string(GetParam().words) + "\n");
    EXPECT_FALSE(exists(mill_.data("corvane.log")) || exists(mill_.data("CV.imp")));
  }

  Result runFailingAfter(std::size_t bytes) const {
    Child child = mill_.scripted();
    child.preloaded = CORVANE_FAILING_READ_LIBRARY;
    child.environment = {{"CORVANE_FAILING_READ", file().string()},
                         {"CORVANE_FAILING_READ_AFTER", std::to_string(bytes)}};
    return runChild(child);
  }

  MillRun mill_;
};

INSTANTIATE_TEST_SUITE_P(
    All, ReadError,
    testing::Values(Input{"Parameters.data", "Could not open parameter file."},
                    Input{"machines.data", "Error: Could not open machine data file."},
                    Input{"orders.data", "Error: Could not open orders file."},
                    Input{"freightRates.data", "Error: Could not open freight rate file."}));

// Nothing can be read at the first address of a process.
TEST_P(ReadError, OfTheFirstReadEndsTheRun) {
  fs::remove(file());
  fs::create_symlink("/proc/self/mem", file());
  expectUnopened(mill_.run());
}

TEST_P(ReadError, AnywhereEndsTheRun) {
  // Several times what is read at once.
  std::string text = contentOf(file());
  while (text.size() < 40000) {
    text += text;
  }
  mill_.write(GetParam().name, text);
  for (const std::size_t bytes :
       {std::size_t{1}, std::size_t{10000}, text.size() / 2, text.size() - 1}) {
    SCOPED_TRACE(bytes);
    fs::remove(mill_.data("corvane.log"));
    fs::remove(mill_.data("CV.imp"));
    expectUnopened(runFailingAfter(bytes));
  }
}

// The error behind the last byte is never met: reading ends at the size of the file.
TEST_P(ReadError, BehindTheEndOfTheFileIsNotMet) {
  expectWholeRun(mill_, runFailingAfter(contentOf(file()).size()));
}

}  // namespace
}  // namespace corvane::faults
