#pragma once

#include <string>

namespace corvane::bench {

// Work on files that no program of its kind can do without, in seconds of processor time: the
// measure of the program's reading and writing.

// Reads the lines of a file and splits each at its commas, no more.
double readAndSplit(const std::string &file);

// Writes the lines of a file again, each with a flush, to another file. The lines are in memory
// before the clock starts.
double writeAndFlush(const std::string &file, const std::string &copy);

}  // namespace corvane::bench
