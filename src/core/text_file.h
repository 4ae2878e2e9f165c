#pragma once

#include <fstream>
#include <functional>
#include <string>

#include "core/line_reader.h"

namespace corvane {

// Takes the line that the reader stands on, up to and including that of Status::kEnd.
using TakeLine = std::function<void(LineReader &line, LineReader::Status status)>;

// Opens the named file on the unopened stream, hands over its lines, and closes it. False when it
// cannot be opened or not be read to its end; lines before a read error have been handed over then.
bool readLines(std::ifstream &file, const std::string &name, const TakeLine &take);

}  // namespace corvane
