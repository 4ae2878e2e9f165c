#pragma once

#include <string>

namespace corvane::fuzz {

// What a fuzz target gets where the program would end its process: throwing_fatal.cpp stands in for
// core/fatal.cpp. It is derived from nothing, so that no handler of the program can take it.
struct RunEnded {
  std::string text;
};

}  // namespace corvane::fuzz
