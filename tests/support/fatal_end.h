#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <string>

#include "support/temporary_folder.h"

namespace corvane::support {

// Runs the step in a child process and expects that it ends the run: exit status 1, the words and a
// line end on standard output, and the same in the log, which the step is given.
inline void expectRunEnds(const std::function<void(std::ostream &log)> &step,
                          const std::string &words) {
  const TemporaryFolder folder;
  const std::string path = folder.file("log");
  const auto run = [&] {
    // Death tests see standard error only.
    std::cout.rdbuf(std::cerr.rdbuf());
    std::ofstream log(path);
    step(log);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(1), testing::Eq(words + "\n"));
  std::ifstream log(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(log), {}), words + "\n") << "the log";
}

}  // namespace corvane::support
