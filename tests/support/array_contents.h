#pragma once

#include <vector>

#include "core/checked_array.h"

namespace corvane::support {

template <typename T>
std::vector<T> contents(const CheckedArray<T> &array) {
  return {array.begin(), array.end()};
}

}  // namespace corvane::support
