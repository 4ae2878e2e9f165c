#include "core/messages.h"

#include <ostream>

namespace corvane {

void tell(std::ostream &channel, std::ostream &log, const std::string &text) {
  channel << text << std::endl;
  log << text << std::endl;
}

}  // namespace corvane
