#include "convert/workbook.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

namespace corvane::convert {

namespace {

// The two ends of a pipe, closed at the end.
class Pipe {
 public:
  Pipe() : valid_(pipe(ends_.data()) == 0) {}
  Pipe(const Pipe &) = delete;
  Pipe &operator=(const Pipe &) = delete;
  ~Pipe() {
    closeEnd(0);
    closeEnd(1);
  }

  bool isValid() const { return valid_; }
  int end(std::size_t which) const { return ends_.at(which); }
  void closeEnd(std::size_t which) {
    if (ends_.at(which) >= 0) {
      close(ends_.at(which));
      ends_.at(which) = -1;
    }
  }

 private:
  std::array<int, 2> ends_ = {-1, -1};
  bool valid_;
};

QByteArray readAll(int descriptor) {
  QByteArray all;
  std::array<char, 65536> block;
  for (ssize_t count = 1; count > 0;) {
    count = read(descriptor, block.data(), block.size());
    all.append(block.data(), count > 0 ? count : 0);
  }
  return all;
}

// Starts the program with its standard output in the pipe and its standard error nowhere: what it
// says of a bad file is its own inside. Its process number, or -1.
pid_t start(std::vector<std::string> words, const Pipe &output) {
  std::vector<char *> arguments;
  for (std::string &word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output.end(1), STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addclose(&actions, output.end(0));
  posix_spawn_file_actions_addclose(&actions, output.end(1));
  pid_t process = -1;
  const int status =
      posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return status == 0 ? process : -1;
}

}  // namespace

bool isWorkbook(const QString &fileName) {
  return fileName.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive);
}

std::optional<QByteArray> readSheet(const QString &fileName, int sheet) {
  Pipe output;
  if (!output.isValid()) {
    return std::nullopt;
  }
  // A name that begins with a dash is no option.
  const std::string path = fileName.startsWith(QLatin1Char('-')) ? "./" + fileName.toStdString()
                                                                 : fileName.toStdString();
  const pid_t process = start({"xlsx2csv", "-s", std::to_string(sheet), path}, output);
  output.closeEnd(1);
  if (process < 0) {
    return std::nullopt;
  }
  const QByteArray table = readAll(output.end(0));
  int status = 0;
  waitpid(process, &status, 0);
  const bool isDone = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return isDone ? std::optional(table) : std::nullopt;
}

}  // namespace corvane::convert
