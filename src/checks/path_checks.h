#pragma once

#include <filesystem>
#include <string>

#include "checks/parameter_checks.h"

namespace corvane::checks {

// A path of the parameters, or of the parameter file itself.
struct NamedPath {
  std::string shown;  // as findings show it
  std::filesystem::path path;
};

NamedPath namedPath(const QString &name, const std::filesystem::path &folder);

// Reports paths that meet, and a log and an import file that cannot be written. Nothing is opened
// for writing. REQUIRES a usable parameter file.
void checkPaths(const MillRecords &mill, const ParameterLines &lines,
                const NamedPath &parameterFile, const std::filesystem::path &folder,
                FindingSink &sink);

// Reports an input file that cannot be opened, at the parameter that names it.
void reportMissing(const MillRecords &mill, const ParameterLines &lines, const QString &key,
                   const NamedPath &path, FindingSink &sink);

}  // namespace corvane::checks
