#pragma once

#include <ostream>
#include <sstream>
#include <string>

namespace corvane::support {

// Holds back what is written to a stream, std::cout for one, for as long as it lives.
class StreamCapture {
 public:
  explicit StreamCapture(std::ostream &stream)
      : stream_(stream), old_(stream.rdbuf(kept_.rdbuf())) {}
  StreamCapture(const StreamCapture &) = delete;
  StreamCapture &operator=(const StreamCapture &) = delete;
  ~StreamCapture() { stream_.rdbuf(old_); }

  std::string text() const { return kept_.str(); }
  // The text so far, which is then forgotten.
  std::string take() {
    std::string taken = kept_.str();
    kept_.str("");
    return taken;
  }

 private:
  std::ostringstream kept_;
  std::ostream &stream_;
  std::streambuf *old_;
};

}  // namespace corvane::support
