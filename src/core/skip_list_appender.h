#pragma once

#include "core/skip_list.h"

namespace corvane {

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
  ~SkipListAppender() { list_.rememberEnds(ends_); }

  // The list does not take ownership. Throws std::bad_alloc, with nothing changed.
  void append(T *element) { list_.linkLast(element, ends_); }

 private:
  skipList<T> &list_;
  // The last node of every level.
  typename skipList<T>::Path ends_;
};

}  // namespace corvane
