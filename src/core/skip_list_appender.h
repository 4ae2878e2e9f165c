#pragma once

#include <algorithm>

#include "core/skip_list.h"

// Appends elements to a list, one after the other, of which its user knows that each orders after
// all that the list holds. The outcome is that of as many calls of append(), but nothing is
// compared and the end is looked for once.
//
// The list must not change otherwise as long as the appender lives, and stands at a remembered
// position only after that.
template <typename T>
class SkipListAppender {
 public:
  explicit SkipListAppender(skipList<T> &list) : list_(list) { list_.seekEnd(ends_); }
  SkipListAppender(const SkipListAppender &) = delete;
  SkipListAppender &operator=(const SkipListAppender &) = delete;
  ~SkipListAppender() {
    for (int level = 0; level < list_.levelCount_; ++level) {
      SkipNode *end = ends_[static_cast<std::size_t>(level)];
      list_.finger_->next(level) = end == list_.head_ ? nullptr : end;
    }
  }

  // The list does not take ownership. Throws std::bad_alloc, with nothing changed.
  void append(T *element) {
    const int level = countedLevel(static_cast<quint32>(list_.count_) + 1U, list_.k_);
    SkipNode *node = list_.linkNode(element, level, ends_);
    std::fill_n(ends_.begin(), level, node);
  }

 private:
  skipList<T> &list_;
  // The last node of every level.
  typename skipList<T>::Path ends_;
};
