#pragma once

#include <fstream>
#include <string>

namespace corvane {

// File names are held and printed as they were given, in UTF-8. When a file of the literal name
// exists, that is the one; otherwise a backslash separates folders.

// Opens for reading. False for what cannot be read as a file: nothing of that name, a folder, a
// device other than an empty one (a device may never end).
bool openForReading(std::ifstream &file, const std::string &name);

// Opens for writing in the given mode (std::ios::app, or std::ios::trunc).
bool openForWriting(std::ofstream &file, const std::string &name, std::ios::openmode mode);

}  // namespace corvane
