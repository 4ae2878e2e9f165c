#pragma once

#include <QtGlobal>
#include <algorithm>
#include <vector>

#include "core/comparison.h"

namespace corvane::support {

// What a skip list must do, written plainly: a sorted vector of element pointers, searched from the
// front, with one remembered position.
template <typename T>
class SortedVectorList {
 public:
  SortedVectorList(const Comparison<T> &comparison, bool duplicatesAllowed)
      : comparison_(comparison), duplicatesAllowed_(duplicatesAllowed) {}

  // 0 with some equal element, or 1 with the element before the key's place (null at the front).
  int search(const T &key, T *&element) const {
    const std::size_t place = placeOf(key);
    if (isEqualAt(place, key)) {
      element = items_[place];
      return 0;
    }
    element = place == 0 ? nullptr : items_[place - 1];
    return 1;
  }

  int insert(T *element, T **existing) {
    const std::size_t place = placeOf(*element);
    if (!duplicatesAllowed_ && isEqualAt(place, *element)) {
      *existing = items_[place];
      return 2;
    }
    items_.insert(at(place), element);
    return 0;
  }

  int append(T *element, T **existing) {
    if (!items_.empty() && comparison_.compare(*items_.back(), *element) >= 0) {
      return insert(element, existing);
    }
    items_.push_back(element);
    position_ = element;
    return 0;
  }

  T *remove(const T &key) {
    const std::size_t place = placeOf(key);
    if (!isEqualAt(place, key)) {
      return nullptr;
    }
    T *removed = items_[place];
    if (position_ == removed) {
      position_ = after(removed);
    }
    items_.erase(at(place));
    return removed;
  }

  void rewind() { position_ = items_.empty() ? nullptr : items_.front(); }
  T *step() {
    T *handed = position_;
    position_ = handed == nullptr ? nullptr : after(handed);
    return handed;
  }

  qint32 clear() {
    const auto released = static_cast<qint32>(items_.size());
    items_.clear();
    position_ = nullptr;
    return released;
  }

  const std::vector<T *> &items() const { return items_; }
  T *position() const { return position_; }

 private:
  auto at(std::size_t place) { return items_.begin() + static_cast<std::ptrdiff_t>(place); }

  // The number of elements before the key.
  std::size_t placeOf(const T &key) const {
    std::size_t place = 0;
    while (place < items_.size() && comparison_.compare(*items_[place], key) < 0) {
      ++place;
    }
    return place;
  }
  bool isEqualAt(std::size_t place, const T &key) const {
    return place < items_.size() && comparison_.compare(*items_[place], key) == 0;
  }
  T *after(const T *element) const {
    const auto next = std::next(std::find(items_.begin(), items_.end(), element));
    return next == items_.end() ? nullptr : *next;
  }

  const Comparison<T> &comparison_;
  bool duplicatesAllowed_;
  std::vector<T *> items_;
  T *position_ = nullptr;
};

}  // namespace corvane::support
