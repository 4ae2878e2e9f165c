#pragma once

#include <filesystem>
#include <ostream>

namespace corvane::bench {

// The sections of the report. Each measures what it writes, `repeats` times, on mills that it
// generates in the folder.
void writeWholeRuns(std::ostream &out, int repeats, const std::filesystem::path &folder);
void writeSolver(std::ostream &out, int repeats, const std::filesystem::path &folder);
void writePricing(std::ostream &out, int repeats, const std::filesystem::path &folder);
void writeFiles(std::ostream &out, int repeats, const std::filesystem::path &folder);
void writeMemory(std::ostream &out, int repeats, const std::filesystem::path &folder);
void writeGrowth(std::ostream &out, int repeats, const std::filesystem::path &folder);

}  // namespace corvane::bench
