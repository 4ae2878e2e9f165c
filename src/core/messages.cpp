#include "core/messages.h"

#include <ostream>

#include "core/progress.h"

namespace corvane {

void tell(std::ostream &channel, std::ostream &log, const std::string &text) {
  clearProgress();
  channel << text << std::endl;
  log << text << std::endl;
}

}  // namespace corvane
