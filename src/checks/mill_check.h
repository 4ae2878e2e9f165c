#pragma once

#include <deque>
#include <functional>

#include "checks/check_summary.h"
#include "checks/path_checks.h"

namespace corvane::checks {

// Gives the bytes of a file; false where it cannot be opened.
using ReadBytes = std::function<bool(const NamedPath &path, std::string &bytes)>;

// A mill as it was read. Findings point into the files.
struct CheckedMill {
  // The files that could be opened, the parameter file first, and where they lie.
  std::deque<SourceFile> files;
  std::vector<NamedPath> paths;
  MillRecords records;
  CheckSummary summary;
};

// Checks the mill of a parameter file, whose other names hold in the folder: reads all files, hands
// every finding to the sink, and sums up. False when the parameter file cannot be opened.
bool checkMill(const NamedPath &parameterFile, const std::filesystem::path &folder,
               const ReadBytes &read, FindingSink &sink, CheckedMill &mill);

}  // namespace corvane::checks
