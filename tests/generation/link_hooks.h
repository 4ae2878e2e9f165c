#pragma once

#include <ctime>

namespace corvane::support {

// The link of this executable leads malloc, calloc, realloc and time, as our own sources call them,
// through the objects below. One of each at a time.

// Lets the n-th request for the memory of an array from here on (from 1) be refused.
class RefusedArray {
 public:
  explicit RefusedArray(int n);
  RefusedArray(const RefusedArray &) = delete;
  RefusedArray &operator=(const RefusedArray &) = delete;
  ~RefusedArray();
};

// A clock that shows `start` when it is first looked at and `step` seconds more each time after.
class TestClock {
 public:
  TestClock(std::time_t start, std::time_t step);
  TestClock(const TestClock &) = delete;
  TestClock &operator=(const TestClock &) = delete;
  ~TestClock();
};

}  // namespace corvane::support
