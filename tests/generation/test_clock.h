#pragma once

#include <ctime>

namespace corvane::support {

// The link of this executable leads time, as our own sources call it, through this: a clock that
// shows `start` when it is first looked at and `step` seconds more each time after. One at
// a time.
class TestClock {
 public:
  TestClock(std::time_t start, std::time_t step);
  TestClock(const TestClock &) = delete;
  TestClock &operator=(const TestClock &) = delete;
  ~TestClock();
};

}  // namespace corvane::support
