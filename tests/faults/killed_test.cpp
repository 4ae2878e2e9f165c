// Runs that are killed before one of their writes, and runs that repeat.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "mill_run.h"

namespace corvane::faults {
namespace {

using testing::EndsWith;
using testing::StartsWith;

std::string inputsOf(const MillRun &mill) {
  std::string all;
  for (const char *name : MillRun::kInputs) {
    all += contentOf(mill.data(name));
  }
  return all;
}

// CORVANE_FULL_SWEEP takes more.
std::size_t attempts() {
  return std::getenv("CORVANE_FULL_SWEEP") != nullptr ? 300 : 6;
}

class KilledRun : public testing::Test {
 protected:
  KilledRun() {
    mill_.takeSample("three_mills");
    // Patterns by the thousand are not what is tested here.
    mill_.write("Parameters.data", contentOf(mill_.data("Parameters.data")) +
                                       "new patterns per iteration=10\n"
                                       "stop generating threshold=100\n");
  }

  // Of a whole run.
  long countWrites() const {
    const std::filesystem::path count = mill_.folder() / "writes";
    expectWholeRun(mill_, runWith({{"CORVANE_WRITES", count.string()}}));
    return std::stol(contentOf(count));
  }

  Result runKilledAt(long write) const {
    return runWith({{"CORVANE_KILLED_AT_WRITE", std::to_string(write)}});
  }

  Result runWith(const std::map<std::string, std::string> &environment) const {
    Child child = mill_.onClp();
    child.environment.insert(environment.begin(), environment.end());
    child.preloaded = CORVANE_ENDING_WRITE_LIBRARY;
    return runChild(child);
  }

  MillRun mill_;
};

TEST_F(KilledRun, LeavesInputsAndFormerSectionsOfTheLogAndNothingThatLooksWhole) {
  const long writes = countWrites();
  const std::string whole = mill_.importFile();
  const std::string inputs = inputsOf(mill_);
  std::mt19937 random(20260517);
  std::vector<long> moments = {1, writes};
  while (moments.size() < attempts()) {
    moments.push_back(std::uniform_int_distribution<long>(1, writes)(random));
  }
  for (const long moment : moments) {
    const std::string before = mill_.log();
    EXPECT_EQ(runKilledAt(moment).status, -SIGKILL)
        << "before write " << moment << " of " << writes;
    EXPECT_THAT(mill_.log(), StartsWith(before));
    EXPECT_EQ(inputsOf(mill_), inputs);
    const std::string import = mill_.importFile();
    EXPECT_THAT(whole, StartsWith(import));
    EXPECT_THAT(mill_.log().substr(before.size()), testing::Not(EndsWith("\n\n")));
    // The next section must begin a line; a killed run leaves whole lines only.
    EXPECT_THAT(mill_.log(), EndsWith("\n"));
  }
  expectWholeRun(mill_, runChild(mill_.onClp()));
  EXPECT_EQ(mill_.importFile(), whole);
}

class RepeatedRun : public KilledRun {};

TEST_F(RepeatedRun, GivesTheSameBytesForOneSeedAndOthersForAnother) {
  const Result first = runChild(mill_.onClp());
  const std::string import = mill_.importFile();
  const std::string log = withoutTimes(mill_.log());
  remove(mill_.data("corvane.log"));
  const Result second = runChild(mill_.onClp());
  EXPECT_EQ(mill_.importFile(), import);
  EXPECT_EQ(withoutTimes(mill_.log()), log);
  EXPECT_EQ(second.out, first.out);
  mill_.write("Parameters.data",
              contentOf(mill_.data("Parameters.data")) + "rand num gen seed=4711\n");
  expectWholeRun(mill_, runChild(mill_.onClp()));
  EXPECT_NE(mill_.importFile(), import);
}

}  // namespace
}  // namespace corvane::faults
