#pragma once

#include <cstddef>
#include <cstdint>
#include <iostream>
#include <streambuf>
#include <string_view>
#include <utility>

// The entry of every target, called once for each input, by libFuzzer or by corpus_main.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace corvane::fuzz {

inline std::string_view textOf(const std::uint8_t *data, std::size_t size) {
  return {reinterpret_cast<const char *>(data), size};
}

// Takes everything and keeps nothing.
class Sink : public std::streambuf {
 protected:
  int_type overflow(int_type character) override { return traits_type::not_eof(character); }
  std::streamsize xsputn(const char * /*text*/, std::streamsize count) override { return count; }
};

// Keeps standard output and standard error of the C++ streams quiet for as long as it lives; what a
// sanitizer says still shows.
class Quiet {
 public:
  Quiet() : out_(std::cout.rdbuf(&sink_)), err_(std::cerr.rdbuf(&sink_)) {}
  Quiet(const Quiet &) = delete;
  Quiet &operator=(const Quiet &) = delete;
  ~Quiet() {
    std::cout.rdbuf(out_);
    std::cerr.rdbuf(err_);
  }

 private:
  Sink sink_;
  std::streambuf *out_;
  std::streambuf *err_;
};

// An input that holds several files: the text up to the first line "%%", which is taken off the
// front of the rest together with that line; all of the rest when there is no such line.
inline std::string_view takePart(std::string_view &rest) {
  constexpr std::string_view kLine = "%%\n";
  std::size_t at = 0;
  while ((at = rest.find(kLine, at)) != std::string_view::npos) {
    if (at == 0 || rest[at - 1] == '\n') {
      const std::string_view part = rest.substr(0, at);
      rest.remove_prefix(at + kLine.size());
      return part;
    }
    ++at;
  }
  return std::exchange(rest, {});
}

}  // namespace corvane::fuzz
