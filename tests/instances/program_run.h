#pragma once

// Whole runs of the program inside a test, in a folder of their own.

#include <filesystem>
#include <string>

#include "app/planner.h"

namespace corvane {

// What a run left behind.
struct RunOutcome {
  std::string importFile;
  std::string log;
  std::string output;  // standard output and standard error
};

// An empty folder under the test's temporary folder.
std::filesystem::path freshFolder(const std::string &name);

// Runs the program with the folder as working directory, on its default file names; the record is
// the run's own. A fatal error ends the test.
RunOutcome runProgram(const std::filesystem::path &folder, RunRecord &record);

// The bytes of a file; empty when there is none.
std::string contentOf(const std::filesystem::path &path);

}  // namespace corvane
