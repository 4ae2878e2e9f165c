#pragma once

#include <cstddef>

namespace corvane::support {

// Watches operator new and operator delete, which this executable replaces, for as long as it
// lives; one at a time.
class HeapProbe {
 public:
  HeapProbe();
  HeapProbe(const HeapProbe &) = delete;
  HeapProbe &operator=(const HeapProbe &) = delete;
  ~HeapProbe();

  // The number of requests so far, and of those for so many bytes.
  std::size_t requests() const;
  std::size_t requestsOf(std::size_t bytes) const;
  // The number of blocks given back.
  std::size_t releases() const;
  // Whether this block was given back.
  bool wasReleased(const void *block) const;

  // Lets the n-th request from here on (from 1) throw std::bad_alloc.
  void failRequest(int n);
  // Likewise the n-th one for so many bytes.
  void failRequestOf(std::size_t bytes, int n);
};

}  // namespace corvane::support
