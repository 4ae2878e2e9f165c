#include "child_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace corvane::bench {

namespace {

// Takes `size` bytes from a child that gets the channel to send them; `child` does not return
// unless it failed.
void hear(const std::filesystem::path &folder, const std::function<void(int channel)> &child,
          void *result, std::size_t size) {
  int channel[2];
  if (pipe(channel) != 0) {
    throw std::runtime_error("no pipe");
  }
  const pid_t id = fork();
  if (id == 0) {
    try {
      std::filesystem::current_path(folder);
      child(channel[1]);
    } catch (...) {
      _exit(EXIT_FAILURE);
    }
    _exit(EXIT_FAILURE);
  }
  close(channel[1]);
  const bool heard = id > 0 && read(channel[0], result, size) == static_cast<ssize_t>(size);
  close(channel[0]);
  int status = 0;
  if (id > 0) {
    waitpid(id, &status, 0);
  }
  if (!heard || !WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS) {
    throw std::runtime_error("a measured run failed in " + folder.string());
  }
}

}  // namespace

void runInChild(const std::filesystem::path &folder, const std::function<void(void *)> &work,
                void *result, std::size_t size) {
  const auto child = [&](int channel) {
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    std::vector<char> bytes(size);
    work(bytes.data());
    const bool told = write(channel, bytes.data(), size) == static_cast<ssize_t>(size);
    _exit(told ? EXIT_SUCCESS : EXIT_FAILURE);
  };
  hear(folder, child, result, size);
}

void runProgram(const std::filesystem::path &folder, const std::string &program, void *result,
                std::size_t size) {
  const std::filesystem::path file =
      std::filesystem::read_symlink("/proc/self/exe").replace_filename(program);
  const auto child = [&](int channel) {
    dup2(channel, STDOUT_FILENO);
    execl(file.c_str(), file.c_str(), nullptr);
  };
  hear(folder, child, result, size);
}

}  // namespace corvane::bench
