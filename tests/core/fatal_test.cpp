#include "core/fatal.h"

#include <gtest/gtest.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "core/zem_mem_mgr.h"
#include "support/fatal_end.h"
#include "support/heap_probe.h"

namespace corvane {
namespace {

TEST(FatalDeathTest, EndRunSpeaksOnStandardOutputAndInTheLog) {
  support::expectRunEnds([](std::ostream &log) { endRun(log, "Error: gone."); }, "Error: gone.");
}

TEST(FatalDeathTest, EndRunOnSpeaksOnTheGivenChannelOnly) {
  EXPECT_EXIT(endRunOn(std::cerr, "Could not open it."), testing::ExitedWithCode(1),
              testing::Eq("Could not open it.\n"));
}

TEST(FatalDeathTest, TheTextStandsInTheLogBeforeTheProcessEnds) {
  // Nothing may be left in a buffer: the stream is never closed.
  const support::TemporaryFolder folder;
  const std::string path = folder.file("log");
  auto *log = new std::ofstream(path);
  EXPECT_EXIT(endRun(*log, "Error: gone."), testing::ExitedWithCode(1), "");
  std::ifstream in(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "Error: gone.\n");
  delete log;
}

TEST(FatalDeathTest, WithoutMemoryOneLineGoesToStandardError) {
  EXPECT_EXIT(endRunOutOfMemory(), testing::ExitedWithCode(1),
              testing::Eq("Error: Out of memory.\n"));
}

void askForMemoryWhereNothingMayBeThrown() noexcept {
  support::HeapProbe probe;
  probe.failRequest(1);
  heapFree(heapAllocate(8));
}

TEST(FatalDeathTest, ABadAllocThatNobodyCanCatchEndsTheRunLikeAnyOther) {
  EXPECT_EXIT(
      {
        endRunOutOfMemoryOnTerminate();
        askForMemoryWhereNothingMayBeThrown();
      },
      testing::ExitedWithCode(1), testing::Eq("Error: Out of memory.\n"));
}

TEST(Fatal, TheEndWithoutMemoryIsWhatTerminates) {
  const std::terminate_handler before = std::get_terminate();
  endRunOutOfMemoryOnTerminate();
  EXPECT_EQ(std::get_terminate(), &endRunOutOfMemory);
  std::set_terminate(before);
}

}  // namespace
}  // namespace corvane
