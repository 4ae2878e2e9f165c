#include "core/fatal.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>

#include "core/progress.h"

namespace corvane {

void endRun(std::ostream &log, const std::string &text) {
  log << text << std::endl;
  endRunOn(std::cout, text);
}

void endRunOn(std::ostream &channel, const std::string &text) {
  clearProgress();
  channel << text << std::endl;
  std::exit(1);
}

void endRunOutOfMemory() noexcept {
  clearProgress();
  std::fputs("Error: Out of memory.\n", stderr);
  std::_Exit(1);
}

void endRunOutOfMemoryOnTerminate() noexcept {
  std::set_terminate(endRunOutOfMemory);
}

}  // namespace corvane
