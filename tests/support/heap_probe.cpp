#include "support/heap_probe.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define CORVANE_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_ADDRESS_SANITIZER
#endif
#endif

#ifdef CORVANE_ADDRESS_SANITIZER
// Tests ask for more memory than there is and expect null.
extern "C" const char *__asan_default_options() {  // NOLINT(bugprone-reserved-identifier)
  return "allocator_may_return_null=1";
}
#endif

namespace {

constexpr std::size_t kMost = 1U << 16U;

// Plain arrays: recording must not ask for memory.
bool watching = false;
int requestsUntilFailure = 0;
std::size_t failingBytes = 0;  // 0: requests of any size count
std::array<std::size_t, kMost> requested;
std::array<const void *, kMost> released;
std::size_t requestCount = 0;
std::size_t releaseCount = 0;

void noteRequest(std::size_t bytes) {
  const bool counts = failingBytes == 0 || failingBytes == bytes;
  if (counts && requestsUntilFailure > 0 && --requestsUntilFailure == 0) {
    throw std::bad_alloc();
  }
  if (requestCount < kMost) {
    requested[requestCount] = bytes;
  }
  ++requestCount;
}

void *take(std::size_t bytes) {
  if (watching) {
    noteRequest(bytes);
  }
  void *block = std::malloc(std::max<std::size_t>(bytes, 1));
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

void giveBack(void *block) noexcept {
  if (watching && block != nullptr) {
    if (releaseCount < kMost) {
      released[releaseCount] = block;
    }
    ++releaseCount;
  }
  std::free(block);
}

}  // namespace

void *operator new(std::size_t bytes) {
  return take(bytes);
}
void *operator new[](std::size_t bytes) {
  return take(bytes);
}
void operator delete(void *block) noexcept {
  giveBack(block);
}
void operator delete[](void *block) noexcept {
  giveBack(block);
}
void operator delete(void *block, std::size_t /*bytes*/) noexcept {
  giveBack(block);
}
void operator delete[](void *block, std::size_t /*bytes*/) noexcept {
  giveBack(block);
}

namespace corvane::support {

HeapProbe::HeapProbe() {
  requestCount = 0;
  releaseCount = 0;
  requestsUntilFailure = 0;
  watching = true;
}

HeapProbe::~HeapProbe() {
  watching = false;
  requestsUntilFailure = 0;
}

std::size_t HeapProbe::requests() const {
  return requestCount;
}

std::size_t HeapProbe::requestsOf(std::size_t bytes) const {
  const auto end = requested.begin() + static_cast<std::ptrdiff_t>(std::min(requestCount, kMost));
  return static_cast<std::size_t>(std::count(requested.begin(), end, bytes));
}

std::size_t HeapProbe::releases() const {
  return releaseCount;
}

bool HeapProbe::wasReleased(const void *block) const {
  const auto end = released.begin() + static_cast<std::ptrdiff_t>(std::min(releaseCount, kMost));
  return std::find(released.begin(), end, block) != end;
}

void HeapProbe::failRequest(int n) {
  failRequestOf(0, n);
}

void HeapProbe::failRequestOf(std::size_t bytes, int n) {
  failingBytes = bytes;
  requestsUntilFailure = n;
}

}  // namespace corvane::support
