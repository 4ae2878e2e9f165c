#include "program_run.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "app/planner.h"
#include "support/temporary_folder.h"

namespace corvane {

namespace fs = std::filesystem;

namespace {

// Makes the folder the working directory, and the former one again at the end.
class WorkingDirectory {
 public:
  explicit WorkingDirectory(const fs::path &folder) : before_(fs::current_path()) {
    fs::current_path(folder);
  }
  WorkingDirectory(const WorkingDirectory &) = delete;
  WorkingDirectory &operator=(const WorkingDirectory &) = delete;
  ~WorkingDirectory() { fs::current_path(before_); }

 private:
  fs::path before_;
};

// Sends a stream into a text for as long as it lives.
class Redirection {
 public:
  Redirection(std::ostream &stream, std::ostringstream &text)
      : stream_(stream), before_(stream.rdbuf(text.rdbuf())) {}
  Redirection(const Redirection &) = delete;
  Redirection &operator=(const Redirection &) = delete;
  ~Redirection() { stream_.rdbuf(before_); }

 private:
  std::ostream &stream_;
  std::streambuf *before_;
};

}  // namespace

fs::path freshFolder(const std::string &name) {
  static const support::TemporaryFolder all;
  fs::path folder = all.path() / name;
  fs::remove_all(folder);
  fs::create_directories(folder);
  return folder;
}

RunOutcome runProgram(const fs::path &folder, RunRecord &record) {
  const WorkingDirectory here(folder);
  PatternRandom random;
  std::ofstream log;
  std::ostringstream output;
  const Redirection out(std::cout, output);
  const Redirection err(std::cerr, output);
  EXPECT_EQ(runPlanner(record, random, log), 0);
  return {contentOf("data/CV.imp"), contentOf("data/corvane.log"), output.str()};
}

std::string contentOf(const fs::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace corvane
