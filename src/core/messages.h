#pragma once

#include <iosfwd>
#include <string>

namespace corvane {

// Writes the text and a line end to the channel and to the log.
void tell(std::ostream &channel, std::ostream &log, const std::string &text);

}  // namespace corvane
