#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace corvane {

// File names are held and printed as they were given, in UTF-8. When a file of the literal name
// exists, that is the one; otherwise a backslash separates folders.

// The path of the named file for a run that is started in the folder (by default: in the present
// working directory). An absolute name stays what it is.
std::filesystem::path pathOfFile(const std::string &name, const std::filesystem::path &folder = {});

// Whether both names lead to one regular file, by whatever links or spellings; of files that are
// not there yet, whether they would.
bool areOneFile(const std::string &a, const std::string &b);

// Opens for reading. False for what cannot be read as a file: nothing of that name, a folder, a
// device other than an empty one or a terminal (a device may never end).
bool openForReading(std::ifstream &file, const std::string &name);

// Opens for writing in the given mode (std::ios::app, or std::ios::trunc).
bool openForWriting(std::ofstream &file, const std::string &name, std::ios::openmode mode);

}  // namespace corvane
