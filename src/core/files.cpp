#include "core/files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#if !defined(_WIN32)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace corvane {

namespace fs = std::filesystem;

namespace {

fs::path asPath(const std::string &name) {
  return std::u8string(name.begin(), name.end());
}

// Looks ahead for data; a file at its end stays usable.
bool isEmpty(std::ifstream &file) {
  const bool empty = file.peek() == std::ifstream::traits_type::eof() && !file.bad();
  file.clear();
  return empty;
}

bool isTerminal(const fs::path &path) {
#if defined(_WIN32)
  return false;
#else
  const int descriptor = open(path.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  const bool is = descriptor >= 0 && isatty(descriptor) != 0;
  if (descriptor >= 0) {
    close(descriptor);
  }
  return is;
#endif
}

}  // namespace

fs::path pathOfFile(const std::string &name, const fs::path &folder) {
  fs::path literal = folder / asPath(name);
  std::error_code error;
  if (fs::exists(literal, error)) {
    return literal;
  }
  std::string separated = name;
  std::replace(separated.begin(), separated.end(), '\\', '/');
  return folder / asPath(separated);
}

bool areOneFile(const std::string &a, const std::string &b) {
  const fs::path one = pathOfFile(a);
  const fs::path other = pathOfFile(b);
  std::error_code error;
  const fs::file_type type = fs::status(one, error).type();
  if (type != fs::status(other, error).type()) {
    return false;
  }
  if (type == fs::file_type::not_found) {
    return fs::weakly_canonical(fs::absolute(one, error), error) ==
           fs::weakly_canonical(fs::absolute(other, error), error);
  }
  return type == fs::file_type::regular && fs::equivalent(one, other, error);
}

bool openForReading(std::ifstream &file, const std::string &name) {
  const fs::path path = pathOfFile(name);
  std::error_code error;
  const fs::file_type type = fs::status(path, error).type();
  if (type == fs::file_type::directory || type == fs::file_type::block) {
    return false;
  }
  file.open(path, std::ios::in);
  const bool isDevice = type == fs::file_type::character && !isTerminal(path);
  if (file.is_open() && isDevice && !isEmpty(file)) {
    file.close();
  }
  return file.is_open();
}

bool openForWriting(std::ofstream &file, const std::string &name, std::ios::openmode mode) {
  file.open(pathOfFile(name), std::ios::out | mode);
  return file.is_open();
}

}  // namespace corvane
