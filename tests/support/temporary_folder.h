#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace corvane::support {

// A folder of its own for a test, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() /
              ("corvane_test_" + std::to_string(random()) + std::to_string(random()));
    } while (!std::filesystem::create_directories(path_));
  }
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path &path() const { return path_; }
  std::string file(const std::string &name) const { return (path_ / name).string(); }

  // Writes the bytes as they are; returns the path.
  std::string write(const std::string &name, const std::string &bytes) const {
    std::ofstream(file(name), std::ios::binary) << bytes;
    return file(name);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace corvane::support
