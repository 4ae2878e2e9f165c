#include "processes/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace corvane {

namespace {

// The child's files and folder, as posix_spawn wants them.
class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  FileActions(const FileActions &) = delete;
  FileActions &operator=(const FileActions &) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

  void open(int descriptor, const std::string &name, int flags) {
    if (!name.empty()) {
      posix_spawn_file_actions_addopen(&actions_, descriptor, name.c_str(), flags, 0666);
    }
  }
  void join(int descriptor, int with) {
    posix_spawn_file_actions_adddup2(&actions_, with, descriptor);
  }
  void enter(const std::string &folder) {
    if (!folder.empty()) {
      posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
    }
  }
  const posix_spawn_file_actions_t *get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

// Of the words and of what is left of this process's environment: pointers that a null ends.
std::vector<char *> argumentsOf(std::vector<std::string> &words) {
  std::vector<char *> arguments;
  for (std::string &word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  return arguments;
}

std::vector<char *> environmentWithout(const std::string &variable) {
  std::vector<char *> left;
  for (char **entry = environ; *entry != nullptr; ++entry) {
    if (variable.empty() || !std::string_view(*entry).starts_with(variable + "=")) {
      left.push_back(*entry);
    }
  }
  left.push_back(nullptr);
  return left;
}

ChildEnd waitFor(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) {
      return {};
    }
  }
  ChildEnd end;
  end.started = true;
  end.exited = WIFEXITED(status);
  end.status = end.exited ? WEXITSTATUS(status) : WTERMSIG(status);
  return end;
}

}  // namespace

ChildRequest loggedRequest(const QStringList &words, const QString &log) {
  ChildRequest request;
  for (const QString &word : words) {
    request.words.push_back(word.toStdString());
  }
  request.output = request.error = log.toStdString();
  return request;
}

ChildEnd runChild(const ChildRequest &request) {
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
  FileActions actions;
  // The files are named from where this process is, so they come before the folder.
  actions.open(STDIN_FILENO, request.input, O_RDONLY);
  actions.open(STDOUT_FILENO, request.output, kWrite);
  if (!request.error.empty() && request.error == request.output) {
    actions.join(STDERR_FILENO, STDOUT_FILENO);
  } else {
    actions.open(STDERR_FILENO, request.error, kWrite);
  }
  actions.enter(request.folder);
  std::vector<std::string> words = request.words;
  const std::vector<char *> arguments = argumentsOf(words);
  const std::vector<char *> environment = environmentWithout(request.withoutVariable);
  pid_t process = -1;
  const int status = posix_spawnp(&process, arguments[0], actions.get(), nullptr, arguments.data(),
                                  environment.data());
  return status == 0 ? waitFor(process) : ChildEnd();
}

}  // namespace corvane
