#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace corvane::faults {

// A run of the program as a process of its own.
struct Child {
  std::filesystem::path program;
  std::filesystem::path folder;  // its working directory
  // Set for the run; variables that steer the program or its test libraries are not inherited.
  std::map<std::string, std::string> environment = {};
  // A library that the run loads before its own; empty for none.
  std::filesystem::path preloaded = {};
  // Where standard output goes, instead of into the result: a file, or a pipe that nobody reads.
  std::optional<std::filesystem::path> outputTo = std::nullopt;
  bool outputIsClosedPipe = false;
  // The most bytes that a file may have: a full disk, for this process alone.
  std::optional<unsigned long> mostFileBytes = std::nullopt;
  // Takes the superuser's right to pass over the permissions of files.
  bool boundByPermissions = false;
  // After that many seconds the run is ended; it then counts as one that hangs.
  unsigned seconds = 60;
};

struct Result {
  // The exit status, or minus the number of the signal that ended the run.
  int status = 0;
  std::string out;
  std::string err;
};

inline constexpr int kHung = -14;  // ended by the alarm

// Starts the program and waits for its end. What a sanitizer reports gives the exit status 99.
Result runChild(const Child &child);

// As runChild, but makes a pipe of that name, reads nothing from it, and closes its reading end as
// soon as the run has written to it. No open of the pipe waits, and a write waits once a page is
// full: a run that writes more than that is certain to meet the closed end.
Result runAndCloseReader(const Child &child, const std::filesystem::path &pipe);

// The most that such a pipe takes.
inline constexpr std::size_t kPipeBytes = 4096;

// Runs the function in a fork of this process, in the folder, and takes its outcome likewise. The
// function's value is the exit status.
Result runForked(const std::filesystem::path &folder, unsigned seconds, int (*function)());

}  // namespace corvane::faults
