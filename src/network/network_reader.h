#pragma once

#include <string>
#include <string_view>

#include "network/network.h"

namespace corvane::network {

// Reads an import file back: strict, by the grammar of docs/import-file.md. Every line must fit it,
// every name must be declared by a line before, every number must be finite, and the last line must
// be the trailer. What cannot be planned throws Refused, with the line; what can, but may surprise,
// becomes a warning of the network.
//
// The file is read in blocks and never held as a whole.
Network readNetworkFile(const std::string &path);

// The same of a text in memory.
Network readNetworkText(std::string_view text);

}  // namespace corvane::network
