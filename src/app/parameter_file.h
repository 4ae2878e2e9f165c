#pragma once

#include <fstream>
#include <string>

#include "app/run_parameters.h"

namespace corvane {

// The parameter file: "{key}={value}" lines; a line that begins with "#" is a comment. Nothing is
// trimmed, and text behind a second "=" is not looked at.

// Finds the file, opens it on the unopened stream, stores its values and closes it. Everything is
// told on standard output, since there is no log yet: unknown keys, corrected values, lines that
// are too long. A file that cannot be opened ends the run.
void readParameters(RunParameters &parameters, std::ifstream &file);

// The path in the environment variable ZEM_CVN_PARAM, at most 511 bytes of it, or else
// "data\Parameters.data".
std::string parameterFileName();

}  // namespace corvane
