#pragma once

#include "core/skip_list.h"

namespace corvane {

// Walks a list in order: first(), then next() until null hands over every element once. The list
// may grow meanwhile, but the element under the cursor must not be removed.
template <typename T>
class SkipListCursor {
 public:
  explicit SkipListCursor(const skipList<T> &list) : list_(list) {}

  // 0 with the first element, or 1 when the list is empty. The cursor stays before that element, so
  // that next() hands it over.
  int first(T *&element) {
    atHead_ = true;
    SkipNode *node = list_.head_->next(0);
    element = node != nullptr ? list_.raw(node) : nullptr;
    return node != nullptr ? 0 : 1;
  }

  // The next element, or null at the end.
  T *next() {
    if (!atHead_ && current_ == nullptr) {
      return nullptr;
    }
    SkipNode *node = (atHead_ ? list_.head_ : current_)->next(0);
    if (node == nullptr) {
      return nullptr;
    }
    atHead_ = false;
    current_ = node->next(0) != nullptr ? node : nullptr;
    return list_.raw(node);
  }

 private:
  const skipList<T> &list_;
  // The head is named by a flag, since a growing list replaces it.
  bool atHead_ = true;
  SkipNode *current_ = nullptr;
};

// Calls visit(element) for every element, in list order.
template <typename T, typename Visit>
void forEachElement(const skipList<T> &list, Visit visit) {
  SkipListCursor<T> cursor(list);
  while (T *element = cursor.next()) {
    visit(*element);
  }
}

// Walks a list group by group. A group is a run of elements that the grouping comparator, which
// orders by a leading part of the list's own key, does not tell apart. The list must not change
// meanwhile.
template <typename T>
class SkipListGroupCursor {
 public:
  SkipListGroupCursor(const skipList<T> &list, Comparison<T> &grouping)
      : list_(list), grouping_(grouping), current_(list.head_), groupEnd_(list.head_) {}

  // 0 with the first element of the list, whose group next() then hands over; 1 when it is empty.
  int firstGroup(T *&element) { return startAfter(list_.head_, element); }

  // Likewise for the group after the current one; 1 when there is none.
  int nextGroup(T *&element) { return startAfter(groupEnd_, element); }

  // Positions on the group that the grouping comparator finds equal to the key; 1 when there is
  // none. Logarithmic time on average.
  int findGroup(const T &key, T *&element) {
    SkipNode *before = lastNodeWith(
        list_.head_, [&](const T &stored) { return grouping_.compare(stored, key) < 0; });
    SkipNode *node = before->next(0);
    if (node == nullptr || grouping_.compare(*list_.raw(node), key) != 0) {
      return 1;
    }
    return startAfter(before, element);
  }

  // The next element of the group, in list order, or null at its end.
  T *next() {
    if (current_ == groupEnd_) {
      return nullptr;
    }
    current_ = current_->next(0);
    return list_.raw(current_);
  }

 private:
  int startAfter(SkipNode *before, T *&element) {
    current_ = before;
    groupEnd_ = before;
    SkipNode *node = before->next(0);
    if (node == nullptr) {
      element = nullptr;
      return 1;
    }
    element = list_.raw(node);
    const T &first = *element;
    groupEnd_ = lastNodeWith(
        list_.head_, [&](const T &stored) { return grouping_.compare(stored, first) <= 0; });
    return 0;
  }

  // The last node from here on whose element still holds the condition, descending the levels as a
  // search does. The elements that hold it stand before all that do not.
  template <typename Condition>
  SkipNode *lastNodeWith(SkipNode *node, Condition holds) {
    const typename Comparison<T>::SearchScope scope(grouping_);
    SkipNode *stop = nullptr;
    for (int level = list_.levelCount_ - 1; level >= 0; --level) {
      SkipNode *next = node->next(level);
      while (next != nullptr && next != stop && holds(*list_.raw(next))) {
        node = next;
        next = node->next(level);
      }
      stop = next;
    }
    return node;
  }

  const skipList<T> &list_;
  Comparison<T> &grouping_;
  SkipNode *current_;
  SkipNode *groupEnd_;
};

}  // namespace corvane
