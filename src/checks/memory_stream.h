#pragma once

#include <istream>
#include <streambuf>
#include <string_view>

namespace corvane::checks {

// Bytes in memory as a stream, which does not copy them. They outlive it.
class MemoryStream : private std::streambuf, public std::istream {
 public:
  explicit MemoryStream(std::string_view bytes)
      : std::istream(static_cast<std::streambuf *>(this)) {
    // A stream buffer takes bytes that could be written; nothing here writes.
    char *begin = const_cast<char *>(bytes.data());
    setg(begin, begin, begin + bytes.size());
  }
};

}  // namespace corvane::checks
