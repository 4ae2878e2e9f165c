#pragma once

#include <iosfwd>
#include <string>

#include "app/run_parameters.h"

namespace corvane {

// The parameter file: "{key}={value}" lines; a line that begins with "#" is a comment. Nothing is
// trimmed, and text behind a second "=" is not looked at.

// Stores the values of the named file. Unknown keys, corrected values and lines that are too long
// are told on the stream, one message a line. False when the file cannot be opened, or not be read
// to its end; what stands before is stored then.
bool readParameters(RunParameters &parameters, const std::string &fileName, std::ostream &messages);

// The path in the environment variable ZEM_CVN_PARAM, at most 511 bytes of it, or else
// "data\Parameters.data".
std::string parameterFileName();

}  // namespace corvane
