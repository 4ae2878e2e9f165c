#include "core/messages.h"

#include <ostream>

void tell(std::ostream &channel, std::ostream &log, const std::string &text) {
  channel << text << std::endl;
  log << text << std::endl;
}
