// A run in which one allocation after the other fails, once or for good, until a run goes through.
// Built twice, with the scripted solver library and with the default one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "app/planner.h"
#include "failing_memory.h"
#include "mill_run.h"

// CLP loses what it has when its own construction fails; the run ends right after.
extern "C" const char *__lsan_default_options();
extern "C" const char *__lsan_default_options() {
  return "print_suppressions=0";
}
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() {
  return "leak:ClpModel\nleak:ClpSimplex\nleak:libClp\nleak:libCoinUtils\n";
}

namespace corvane::faults {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

const std::string kOutOfMemory = "Error: Out of memory.\n";
const std::string kTrailer = "# End of Corvane. import file.\n";

struct Fault {
  long n;  // 0: none fails
  bool onwards;
};

Fault fault{};

void stopFailing() {
  failAllocation(0, false);
}

// In the child process.
int runWithFault() {
  failAllocation(fault.n, fault.onwards);
  const int status = runProcess();
  stopFailing();
  return status;
}

// CORVANE_FULL_SWEEP takes every allocation instead of some.
bool takesEveryAllocation() {
  return std::getenv("CORVANE_FULL_SWEEP") != nullptr;
}
long strideOf(long inBrief) {
  return takesEveryAllocation() ? 1 : inBrief;
}

class MemoryFaults : public testing::Test {
 protected:
  MemoryFaults() {
    unsetenv("ZEM_CVN_PARAM");
    expectWholeRun(mill_, runWith({0, false}));
    wholeLog_ = withoutTimes(mill_.log());
    wholeImport_ = mill_.importFile();
  }

  Result runWith(const Fault &chosen) {
    clear();
    fault = chosen;
    return runForked(mill_.folder(), 20, runWithFault);
  }

  void clear() const {
    remove(mill_.data("corvane.log"));
    remove(mill_.data("CV.imp"));
  }

  bool isWhole() const {
    return withoutTimes(mill_.log()) == wholeLog_ && mill_.importFile() == wholeImport_;
  }

  // What the run said as it ended, in one line; what it left behind must not look whole.
  std::string endOf(const Result &result) const {
    EXPECT_EQ(result.status, 1) << result.out << result.err;
    const std::string import = mill_.importFile();
    EXPECT_THAT(mill_.log(), Not(HasSubstr("**** End")));
    EXPECT_THAT(import, AnyOf(Not(HasSubstr(kTrailer)), wholeImport_));
    if (!result.err.empty()) {
      EXPECT_EQ(result.out, "");
      return result.err;
    }
    EXPECT_THAT(mill_.log(), AnyOf("", testing::EndsWith("\n" + result.out)));
    return result.out;
  }

  // Words for a file that cannot be opened: the stream library tells no more than that.
  static bool isUnopenedFile(const std::string &words) {
    return words.find("Could not open") != std::string::npos;
  }

  // What the solver says of a failure of its own, and of the arrays that it is given.
  static bool isSolverFailure(const std::string &words) {
    return words.starts_with("Error: Could not allocate memory for ") ||
           words.starts_with("Error: No solution to lp, status : ") ||
           words == "Error: Could not open cplex.\n" || words == "Error: Could not create LP.\n" ||
           words == "Error: Could not add columns to LP.\n";
  }

  // Runs with every stride-th allocation failing; how often a run ended with which words. Runs that
  // went through in spite of the fault have left everything whole, and count under "".
  std::map<std::string, int> sweep(bool onwards, long stride) {
    std::map<std::string, int> ends;
    int wholeInARow = 0;
    // No run survives so many faults in a row: they lie behind its end.
    for (long n = 1; wholeInARow * stride < 60; n += stride) {
      SCOPED_TRACE("allocation " + std::to_string(n));
      const Result result = runWith({n, onwards});
      if (result.status == 0) {
        EXPECT_TRUE(isWhole() && result.out.empty() && result.err.empty());
        ++wholeInARow;
        ++ends[""];
      } else {
        wholeInARow = 0;
        ++ends[endOf(result)];
      }
      if (HasFailure()) {
        break;
      }
    }
    return ends;
  }

  static void expectKnownEnds(const std::map<std::string, int> &ends) {
    int runs = 0;
    for (const auto &[words, count] : ends) {
      EXPECT_TRUE(words.empty() || words == kOutOfMemory || isUnopenedFile(words) ||
                  isSolverFailure(words))
          << words << count << " times";
      std::cout << count << " x " << (words.empty() ? "whole\n" : words);
      runs += count;
    }
    std::cout << runs << " runs\n";
    EXPECT_GT(ends.at(kOutOfMemory), 10);
  }

  static void expectWordsOfEveryArray(const std::map<std::string, int> &ends) {
    for (const char *array : {"objective function coefficients", "senses", "constraint matrix",
                              "lower bounds", "upper bounds", "right hand side", "dual values",
                              "additional objective function coefficients",
                              "additions to the constraint matrix", "additions to the lower bounds",
                              "additions to the upper bounds", "x values", "reduced costs"}) {
      EXPECT_EQ(ends.count(std::string("Error: Could not allocate memory for ") + array + ".\n"),
                1U)
          << array;
    }
  }

  static bool HasFailure() { return testing::Test::HasFailure(); }

  MillRun mill_;
  std::string wholeLog_;
  std::string wholeImport_;
};

TEST_F(MemoryFaults, OneFailedAllocationEndsARunOrChangesNothing) {
  const std::map<std::string, int> ends = sweep(false, strideOf(CORVANE_SWEEP_STRIDE));
  expectKnownEnds(ends);
  if (takesEveryAllocation()) {
    expectWordsOfEveryArray(ends);
  }
}

TEST_F(MemoryFaults, NoMemoryFromSomeAllocationOnEndsTheRun) {
  expectKnownEnds(sweep(true, strideOf(CORVANE_SWEEP_STRIDE)));
}

TEST_F(MemoryFaults, OutOfMemoryBeforeMainEndsTheRunLikewise) {
  Child child{CORVANE_SHORT_OF_MEMORY, mill_.folder()};
  child.environment = {{"CORVANE_COUNT_ALLOCATIONS", "1"}};
  const Result counting = runChild(child);
  ASSERT_EQ(counting.status, 0) << counting.err;
  const long beforeMain = std::stol(counting.err);
  EXPECT_GT(beforeMain, 0);
  for (long n = 1; n <= beforeMain; ++n) {
    for (const char *onwards : {"", "+"}) {
      clear();
      child.environment = {{"CORVANE_FAIL_ALLOCATION", std::to_string(n) + onwards}};
      SCOPED_TRACE(child.environment.begin()->second);
      const Result result = runChild(child);
      // One object of the libraries can do without.
      if (result.status == 0) {
        EXPECT_TRUE(isWhole());
      } else {
        EXPECT_EQ(endOf(result), kOutOfMemory);
        EXPECT_FALSE(exists(mill_.data("corvane.log")));
      }
    }
  }
  std::cout << beforeMain << " allocations before main, " << 2 * beforeMain << " runs\n";
}

}  // namespace
}  // namespace corvane::faults
