#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::fuzz {

// A file in memory that can be opened by name, any number of times. Linux only.
class MemoryFile {
 public:
  // Ends the process when the system has no such file to give.
  MemoryFile();
  MemoryFile(const MemoryFile &) = delete;
  MemoryFile &operator=(const MemoryFile &) = delete;
  ~MemoryFile();

  // Replaces the contents.
  void write(std::string_view bytes);
  const std::string &name() const { return name_; }

 private:
  int descriptor_;
  std::string name_;
};

}  // namespace corvane::fuzz
