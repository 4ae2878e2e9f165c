#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace corvane::bench {

// Runs `work` in a child process with the working directory and hands back the `size` bytes that it
// left at the address it was given. Its standard output goes nowhere. A child starts with the
// memory and the heap of a small process, so its peak memory and its times are those of the work
// alone. Throws std::runtime_error when the child fails.
void runInChild(const std::filesystem::path &folder, const std::function<void(void *)> &work,
                void *result, std::size_t size);

// The same for a result that is plain data.
template <typename Result>
Result inChild(const std::filesystem::path &folder, const std::function<Result()> &work) {
  static_assert(std::is_trivially_copyable_v<Result>);
  Result result{};
  runInChild(
      folder, [&](void *target) { *static_cast<Result *>(target) = work(); }, &result,
      sizeof(Result));
  return result;
}

// The same for a program that stands beside this one and prints its result as the bytes that it is.
void runProgram(const std::filesystem::path &folder, const std::string &program, void *result,
                std::size_t size);

}  // namespace corvane::bench
