#include "core/files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace corvane {

namespace fs = std::filesystem;

namespace {

fs::path pathOf(const std::string &name) {
  return std::u8string(name.begin(), name.end());
}

fs::path resolved(const std::string &name) {
  fs::path literal = pathOf(name);
  std::error_code error;
  if (fs::exists(literal, error)) {
    return literal;
  }
  std::string separated = name;
  std::replace(separated.begin(), separated.end(), '\\', '/');
  return pathOf(separated);
}

// Looks ahead for data; a file at its end stays usable.
bool isEmpty(std::ifstream &file) {
  const bool empty = file.peek() == std::ifstream::traits_type::eof();
  file.clear();
  return empty;
}

}  // namespace

bool openForReading(std::ifstream &file, const std::string &name) {
  const fs::path path = resolved(name);
  std::error_code error;
  const fs::file_type type = fs::status(path, error).type();
  if (type == fs::file_type::directory || type == fs::file_type::block) {
    return false;
  }
  file.open(path, std::ios::in);
  if (file.is_open() && type == fs::file_type::character && !isEmpty(file)) {
    file.close();
  }
  return file.is_open();
}

bool openForWriting(std::ofstream &file, const std::string &name, std::ios::openmode mode) {
  file.open(resolved(name), std::ios::out | mode);
  return file.is_open();
}

}  // namespace corvane
