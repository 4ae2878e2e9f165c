#include "child.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>
#include <system_error>
#include <vector>

namespace corvane::faults {
namespace {

// Numbers of linux/capability.h, which not every machine has.
constexpr unsigned long kMayOverrideAccess = 1;
constexpr unsigned long kMayReadAll = 2;

constexpr int kNotStarted = 127;

// The loader takes a blank in the name of a library for the end of it, and a checkout may have one
// in its path: the run finds the library by a link in its folder.
constexpr const char *kPreloadedLink = "./preloaded.so";

// A build for coverage counts into files that all runs share: a run whose files are cut short must
// leave them alone.
constexpr const char *kCountsVariable = "LLVM_PROFILE_FILE";
constexpr const char *kNoCounts = "/dev/null";

// Takes what is written to a descriptor.
class Catcher {
 public:
  Catcher() : descriptor_(memfd_create("caught", 0)) {}
  Catcher(const Catcher &) = delete;
  Catcher &operator=(const Catcher &) = delete;
  ~Catcher() { close(descriptor_); }

  int descriptor() const { return descriptor_; }
  std::string text() const {
    struct stat status {};
    fstat(descriptor_, &status);
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t got = pread(descriptor_, text.data(), text.size(), 0);
    EXPECT_EQ(got, static_cast<ssize_t>(text.size()));
    return text;
  }

 private:
  int descriptor_;
};

bool isInherited(std::string_view variable) {
  return !variable.starts_with("CORVANE_") && !variable.starts_with("ZEM_") &&
         !variable.starts_with("ASAN_OPTIONS") && !variable.starts_with("UBSAN_OPTIONS");
}

std::vector<std::string> environmentOf(const Child &child) {
  std::vector<std::string> lines = {"ASAN_OPTIONS=exitcode=99", "UBSAN_OPTIONS=exitcode=99"};
  for (char **variable = environ; *variable != nullptr; ++variable) {
    if (isInherited(*variable)) {
      lines.emplace_back(*variable);
    }
  }
  for (const auto &[name, value] : child.environment) {
    lines.push_back(name + "=" + value);
  }
  if (!child.preloaded.empty()) {
    lines.push_back(std::string("LD_PRELOAD=") + kPreloadedLink);
  }
  if (child.mostFileBytes) {
    lines.push_back(std::string(kCountsVariable) + "=" + kNoCounts);
  }
  return lines;
}

void linkPreloaded(const Child &child) {
  const std::filesystem::path link = child.folder / kPreloadedLink;
  if (!child.preloaded.empty() && !std::filesystem::is_symlink(link)) {
    std::filesystem::create_symlink(child.preloaded, link);
  }
}

void limitFileSize(unsigned long bytes) {
  const struct rlimit limit = {bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

int openOutput(const Child &child, const Catcher &out) {
  if (child.outputTo) {
    return open(child.outputTo->c_str(), O_WRONLY | O_CREAT, 0600);
  }
  if (child.outputIsClosedPipe) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) == 0) {
      close(ends[0]);
      return ends[1];
    }
  }
  return out.descriptor();
}

void prepareProcess(const std::filesystem::path &folder, unsigned seconds, int out, int err) {
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  if (chdir(folder.c_str()) != 0) {
    _exit(kNotStarted);
  }
  alarm(seconds);
}

// In the child process; only calls that are safe after a fork.
[[noreturn]] void start(const Child &child, int out, int err, char *const *environment) {
  prepareProcess(child.folder, child.seconds, out, err);
  if (child.boundByPermissions) {
    prctl(PR_CAPBSET_DROP, kMayOverrideAccess);
    prctl(PR_CAPBSET_DROP, kMayReadAll);
  }
  if (child.mostFileBytes) {
    limitFileSize(*child.mostFileBytes);
  }
  std::string name = child.program.filename();
  const std::array<char *, 2> arguments = {name.data(), nullptr};
  execve(child.program.c_str(), arguments.data(), environment);
  _exit(kNotStarted);
}

// The process of the child, or 0 in the child itself. Never -1, which would name every process to
// kill().
pid_t forkSafely() {
  // What waits in a buffer would be written by both processes.
  std::cout.flush();
  std::fflush(nullptr);
  const pid_t process = fork();
  if (process < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  return process;
}

int statusOf(pid_t process) {
  int status = 0;
  waitpid(process, &status, 0);
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

template <typename WhileRunning>
Result runWith(const Child &child, WhileRunning whileRunning) {
  const Catcher out;
  const Catcher err;
  std::vector<std::string> lines = environmentOf(child);
  std::vector<char *> environment;
  for (std::string &line : lines) {
    environment.push_back(line.data());
  }
  environment.push_back(nullptr);
  linkPreloaded(child);
  const int output = openOutput(child, out);
  const pid_t process = forkSafely();
  if (process == 0) {
    start(child, output, err.descriptor(), environment.data());
  }
  if (output != out.descriptor()) {
    close(output);
  }
  whileRunning(process);
  Result result;
  result.status = statusOf(process);
  EXPECT_NE(result.status, kNotStarted) << child.program;
  result.out = out.text();
  result.err = err.text();
  return result;
}

}  // namespace

Result runChild(const Child &child) {
  return runWith(child, [](pid_t) {});
}

Result runAndCloseReader(const Child &child, const std::filesystem::path &pipe) {
  EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  // Both ends at once: a run finds a reader whenever it opens the pipe.
  const int reader = open(pipe.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  EXPECT_GE(reader, 0);
  EXPECT_EQ(fcntl(reader, F_SETPIPE_SZ, static_cast<int>(kPipeBytes)),
            static_cast<int>(kPipeBytes));
  return runWith(child, [reader](pid_t process) {
    const int end = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    // The end of the run, which the alarm of the child brings about at the latest, ends the wait
    // too.
    std::array<pollfd, 2> events = {{{reader, POLLIN, 0}, {end, POLLIN, 0}}};
    EXPECT_GT(poll(events.data(), events.size(), -1), 0);
    EXPECT_NE(events[0].revents & POLLIN, 0) << "nothing was written to the pipe";
    close(reader);
    close(end);
  });
}

Result runForked(const std::filesystem::path &folder, unsigned seconds, int (*function)()) {
  const Catcher out;
  const Catcher err;
  const pid_t process = forkSafely();
  if (process == 0) {
    prepareProcess(folder, seconds, out.descriptor(), err.descriptor());
    std::exit(function());
  }
  return {statusOf(process), out.text(), err.text()};
}

}  // namespace corvane::faults
