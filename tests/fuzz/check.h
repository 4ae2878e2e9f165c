#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace corvane::fuzz {

// Stops the process, as a sanitizer does, when what must hold does not; the input is then a
// finding.
inline void require(bool holds, const std::string &what) {
  if (!holds) {
    std::fprintf(stderr, "fuzz: does not hold: %s\n", what.c_str());
    std::abort();
  }
}

}  // namespace corvane::fuzz
