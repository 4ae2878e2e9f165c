#include "scripted_lp_record.h"

#include <array>

namespace scripted_lp {
namespace {

std::string Formatted(double value) {
  std::array<char, 40> buffer{};
  const int length = std::snprintf(buffer.data(), buffer.size(), "%.17g", value);
  return {buffer.data(), static_cast<std::size_t>(length)};
}

template <typename T, typename Format>
std::string List(const T *values, long count, Format format) {
  if (count < 0) {
    return "[?]";
  }
  if (values == nullptr && count > 0) {
    return "null";
  }
  std::string text = "[";
  for (long i = 0; i < count; ++i) {
    text += i == 0 ? "" : " ";
    text += format(values[i]);
  }
  return text + "]";
}

}  // namespace

CallText::CallText(std::string_view function) : line_(function) {
  line_ += '(';
}

void CallText::Begin(std::string_view name) {
  line_ += separator_;
  separator_ = ", ";
  line_ += name;
  line_ += '=';
}

CallText &CallText::Text(std::string_view name, std::string_view value) {
  Begin(name);
  line_ += value;
  return *this;
}

CallText &CallText::Integer(std::string_view name, long value) {
  return Text(name, std::to_string(value));
}

CallText &CallText::Pointer(std::string_view name, const void *pointer) {
  return Text(name, pointer == nullptr ? "null" : "set");
}

CallText &CallText::Doubles(std::string_view name, const double *values, long count) {
  return Text(name, List(values, count, Formatted));
}

CallText &CallText::Integers(std::string_view name, const int *values, long count) {
  return Text(name, List(values, count, [](int value) { return std::to_string(value); }));
}

CallText &CallText::Characters(std::string_view name, const char *values, long count) {
  return Text(name, List(values, count, [](char value) { return std::string(1, value); }));
}

CallText &CallText::Result(std::string_view value) {
  line_ += ") -> ";
  line_ += value;
  separator_ = " ";
  return *this;
}

Record::~Record() {
  Reset(false);
}

void Record::Reset(bool keep_in_memory) {
  keep_in_memory_ = keep_in_memory;
  lines_.clear();
  if (file_ != nullptr) {
    std::fclose(file_);
    file_ = nullptr;
  }
}

bool Record::OpenFile(const char *path) {
  file_ = std::fopen(path, "wb");
  return file_ != nullptr;
}

void Record::Add(const std::string &line) {
  if (keep_in_memory_) {
    lines_.push_back(line);
  }
  if (file_ != nullptr) {
    std::fputs(line.c_str(), file_);
    std::fputc('\n', file_);
    std::fflush(file_);
  }
}

}  // namespace scripted_lp
