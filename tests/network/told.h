#pragma once

#include <ostream>
#include <string>

#include "network/network_reader.h"

namespace corvane::network {

// The line and words of a refusal; line 0 and no words when there is none.
struct Told {
  quint64 line = 0;
  std::string text;
  bool operator==(const Told &) const = default;
};

inline void PrintTo(const Told &told, std::ostream *out) {
  *out << told.line << ": " << told.text;
}

inline Told toldOf(const Refused &refused) {
  return {refused.line(), refused.what()};
}

// With which the text is refused.
inline Told refusalOf(const std::string &text) {
  try {
    readNetworkText(text);
  } catch (const Refused &refused) {
    return toldOf(refused);
  }
  return {};
}

}  // namespace corvane::network
