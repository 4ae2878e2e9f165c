#pragma once

#include <iosfwd>
#include <string>

#include "app/run_parameters.h"

namespace corvane::plan {

// The parameters of a run in the folder, with the names of its files as they are seen from here: of
// the parameter file that the run would find, the one that the environment names, else
// data\Parameters.data in the folder. An empty folder is the current one. What is wrong in the
// parameter file is told on the stream; one that cannot be opened throws network::Refused.
RunParameters parametersOfMill(const std::string &folder, std::ostream &messages);

// The path of the import file that the run writes.
std::string importFileOfMill(const std::string &folder, std::ostream &messages);

// The path of a file that is named in a folder: relative names are below it.
std::string belowFolder(const std::string &folder, const std::string &name);

}  // namespace corvane::plan
