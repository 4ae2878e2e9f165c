#include "core/fatal.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace corvane {

void endRun(std::ostream &log, const std::string &text) {
  log << text << std::endl;
  endRunOn(std::cout, text);
}

void endRunOn(std::ostream &channel, const std::string &text) {
  channel << text << std::endl;
  std::exit(1);
}

void endRunOutOfMemory() noexcept {
  std::fputs("Error: Out of memory.\n", stderr);
  std::_Exit(1);
}

void endRunOutOfMemoryOnTerminate() noexcept {
  std::set_terminate(endRunOutOfMemory);
}

}  // namespace corvane
