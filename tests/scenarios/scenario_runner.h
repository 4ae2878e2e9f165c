#pragma once

// Whole runs of the program, compared byte for byte with what a folder holds:
//
//   <claim>/data/       the input files, by their default names; copied with all else of the folder
//   <claim>/env         optional: lines VAR=value, set for the run
//   <claim>/program     optional: the word `clp` runs the program on CLP instead of the scripted
//                       solver library
//   <claim>/checker     optional: options of check_import for the import files of the run
//   <claim>/expected/   `exit` (the status and a line break), `stdout`, `stderr`, and every file
//                       that the run makes or changes, by its path without a leading data/
//
// Before the comparison the time of a banner line is written YYYY/MM/DD HH:MM:SS.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace corvane::scenarios {

// What a run gave, or should give: bytes by name ("exit", "stdout", "stderr", files).
using Outcome = std::map<std::string, std::string>;

struct Run {
  std::filesystem::path scenario;  // the folder of the claim
  std::filesystem::path work;      // where the run happens; emptied first
  std::filesystem::path program;
  int seconds = 60;  // then the run is ended, and its exit reads "timeout"
};

std::string MaskTimes(const std::string &text);

// Copies the scenario and runs the program in the copy. Throws std::runtime_error when the
// scenario or the program cannot be used, and std::filesystem::filesystem_error.
Outcome Perform(const Run &run);

// What expected/ holds; empty when there is no such folder.
Outcome ReadExpected(const std::filesystem::path &scenario);

// Replaces expected/ by `outcome`.
void WriteExpected(const std::filesystem::path &scenario, const Outcome &outcome);

// One complaint a name that differs, with the first differing lines; empty when all is equal.
std::vector<std::string> Differences(const Outcome &expected, const Outcome &actual);

}  // namespace corvane::scenarios
