#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "network/network.h"

namespace corvane::network {

// Names of one kind of thing and their places in its list, looked up without a copy of the name.
class NameTable {
 public:
  // kNone when unknown.
  Index find(std::string_view name) const {
    const auto found = places_.find(name);
    return found == places_.end() ? kNone : found->second;
  }

  void add(std::string_view name, Index place) { places_.emplace(name, place); }

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };

  std::unordered_map<std::string, Index, Hash, std::equal_to<>> places_;
};

}  // namespace corvane::network
