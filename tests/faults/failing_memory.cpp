#include "failing_memory.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define CORVANE_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_SANITIZED 1
#endif
#endif

namespace corvane::faults {
namespace {

constinit long failing = 0;
constinit bool failingOnwards = false;
constinit long counted = 0;

bool mustFail() {
  ++counted;
  const bool fails = failing > 0 && (failingOnwards ? counted >= failing : counted == failing);
  if (fails) {
    errno = ENOMEM;
  }
  return fails;
}

}  // namespace

void failAllocation(long n, bool onwards) {
  failing = n;
  failingOnwards = onwards;
  counted = 0;
}

long countedAllocations() {
  return counted;
}

}  // namespace corvane::faults

using corvane::faults::mustFail;

extern "C" {

// Where a build for coverage writes its counts; there is none in other builds.
void __llvm_profile_set_filename(const char *name) __attribute__((weak));

// All processes share the files of the counts, and one without memory would leave them half
// written.
__attribute__((constructor)) static void countNothing() {
  if (__llvm_profile_set_filename != nullptr) {
    __llvm_profile_set_filename("/dev/null");
  }
}
}

#if defined(CORVANE_SANITIZED)

namespace {

void *allocate(std::size_t size) {
  void *block = mustFail() ? nullptr : std::malloc(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

}  // namespace

void *operator new(std::size_t size) {
  return allocate(size);
}
void *operator new[](std::size_t size) {
  return allocate(size);
}
void operator delete(void *block) noexcept {
  std::free(block);
}
void operator delete[](void *block) noexcept {
  std::free(block);
}
void operator delete(void *block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void *block, std::size_t) noexcept {
  std::free(block);
}

#else

extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

void *malloc(std::size_t size) noexcept {
  return mustFail() ? nullptr : __libc_malloc(size);
}

void *calloc(std::size_t count, std::size_t size) noexcept {
  return mustFail() ? nullptr : __libc_calloc(count, size);
}

void *realloc(void *block, std::size_t size) noexcept {
  return mustFail() ? nullptr : __libc_realloc(block, size);
}
}

#endif
