// Runs that are killed while they work, at any moment, and runs that repeat.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>

#include "mill_run.h"

namespace corvane::faults {
namespace {

using testing::EndsWith;
using testing::StartsWith;

constexpr const char *kInputs[] = {"Parameters.data", "machines.data", "orders.data",
                                   "freightRates.data"};

std::string inputsOf(const MillRun &mill) {
  std::string all;
  for (const char *name : kInputs) {
    all += contentOf(mill.data(name));
  }
  return all;
}

// CORVANE_FULL_SWEEP takes more.
int attempts() {
  return std::getenv("CORVANE_FULL_SWEEP") != nullptr ? 300 : 12;
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

  long microsecondsOfARun() const {
    const auto start = std::chrono::steady_clock::now();
    expectWholeRun(mill_, runChild(mill_.onClp()));
    const auto taken = std::chrono::steady_clock::now() - start;
    return std::chrono::duration_cast<std::chrono::microseconds>(taken).count();
  }

  MillRun mill_;
};

TEST_F(KilledRun, LeavesInputsAndFormerSectionsOfTheLogAndNothingThatLooksWhole) {
  const long duration = microsecondsOfARun();
  const std::string whole = mill_.importFile();
  const std::string inputs = inputsOf(mill_);
  std::mt19937 random(20260517);
  std::uniform_int_distribution<long> moment(0, duration);
  int killed = 0;
  for (int attempt = 0; attempt < attempts(); ++attempt) {
    const std::string before = mill_.log();
    const Result result = runAndKill(mill_.onClp(), static_cast<unsigned>(moment(random)));
    EXPECT_THAT(mill_.log(), StartsWith(before));
    EXPECT_EQ(inputsOf(mill_), inputs);
    if (result.status == -SIGKILL) {
      ++killed;
      const std::string import = mill_.importFile();
      EXPECT_THAT(whole, StartsWith(import));
      if (import.size() < whole.size()) {
        EXPECT_THAT(mill_.log(), testing::Not(EndsWith("\n\n")));
      }
    }
    // The next section must begin a line; a killed run leaves whole lines only.
    EXPECT_THAT(mill_.log(), EndsWith("\n"));
  }
  std::cout << killed << " runs killed within " << duration << " us\n";
  EXPECT_GT(killed, 0);
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
