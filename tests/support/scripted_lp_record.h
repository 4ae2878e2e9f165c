#pragma once

// The text of one recorded call and where the lines go.

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace scripted_lp {

// Builds one line: name(argument=value, ...) -> result output=value ...
class CallText {
 public:
  explicit CallText(std::string_view function);

  CallText &Text(std::string_view name, std::string_view value);
  CallText &Integer(std::string_view name, long value);
  CallText &Pointer(std::string_view name, const void *pointer);  // null or set
  // Arrays: [count entries], or null where entries are wanted; a negative count shows as [?].
  CallText &Doubles(std::string_view name, const double *values, long count);
  CallText &Integers(std::string_view name, const int *values, long count);
  CallText &Characters(std::string_view name, const char *values, long count);

  // Ends the arguments; what follows is output.
  CallText &Result(std::string_view value);
  CallText &Result(long value) { return Result(std::to_string(value)); }

  const std::string &Line() const { return line_; }

 private:
  void Begin(std::string_view name);

  std::string line_;
  const char *separator_ = "";
};

// Keeps lines in a file, in memory, or in both. Lines reach the file at once, so a process that
// ends in any way leaves them.
class Record {
 public:
  Record() = default;
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;
  ~Record();

  // Forgets all lines and closes the file.
  void Reset(bool keep_in_memory);
  // False when the file cannot be written.
  bool OpenFile(const char *path);
  bool IsWanted() const { return keep_in_memory_ || file_ != nullptr; }
  void Add(const std::string &line);
  const std::vector<std::string> &Lines() const { return lines_; }

 private:
  bool keep_in_memory_ = false;
  std::FILE *file_ = nullptr;
  std::vector<std::string> lines_;
};

}  // namespace scripted_lp
