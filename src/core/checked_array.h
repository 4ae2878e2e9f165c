#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <type_traits>

namespace corvane {

// A flat array of plain values that reports when memory cannot be had, for the arrays whose failure
// has words of its own.
template <typename T>
class CheckedArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  CheckedArray() = default;
  CheckedArray(const CheckedArray &) = delete;
  CheckedArray &operator=(const CheckedArray &) = delete;
  ~CheckedArray() { release(); }

  // Replaces the contents by `count` values; false, and empty, when memory cannot be had. A count
  // of 0 still takes a block, so that data() is never null after success.
  bool allocate(std::size_t count, T value) {
    release();
    if (!reserve(std::max<std::size_t>(count, 1))) {
      return false;
    }
    std::fill_n(data_, count, value);
    size_ = count;
    return true;
  }

  // Takes memory for at least `capacity` values, and keeps the contents.
  bool reserve(std::size_t capacity) {
    if (capacity <= capacity_) {
      return true;
    }
    if (capacity > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
      return false;
    }
    void *grown = std::realloc(data_, capacity * sizeof(T));
    if (grown == nullptr) {
      return false;
    }
    data_ = static_cast<T *>(grown);
    capacity_ = capacity;
    return true;
  }

  // Appends at constant cost on average.
  bool append(T value) {
    if (size_ == capacity_ && !reserve(std::max<std::size_t>(16, capacity_ * 2))) {
      return false;
    }
    data_[size_++] = value;
    return true;
  }

  void release() {
    std::free(data_);
    data_ = nullptr;
    size_ = capacity_ = 0;
  }

  T *data() { return data_; }
  const T *data() const { return data_; }
  std::size_t size() const { return size_; }
  T &operator[](std::size_t at) { return data_[at]; }
  const T &operator[](std::size_t at) const { return data_[at]; }
  T *begin() { return data_; }
  T *end() { return data_ + size_; }
  const T *begin() const { return data_; }
  const T *end() const { return data_ + size_; }

 private:
  T *data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace corvane
