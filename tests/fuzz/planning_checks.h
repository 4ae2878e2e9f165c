#pragma once

#include "check.h"
#include "core/comparison.h"
#include "core/skip_list_cursor.h"

namespace corvane::fuzz {

// Every element orders strictly before the next one, and the list counts them right.
template <typename T>
void requireStrictOrder(const skipList<T> &list, const Comparison<T> &comparison) {
  const T *before = nullptr;
  int count = 0;
  forEachElement(list, [&](const T &element) {
    require(before == nullptr || comparison.compare(*before, element) < 0, "a list in order");
    before = &element;
    ++count;
  });
  require(count == list.count(), "the count of a list");
}

}  // namespace corvane::fuzz
