// The ends of a run for fuzz targets: they throw, so that the process can take the next input.

#include <cstdlib>
#include <iostream>

#include "core/fatal.h"
#include "run_ended.h"

namespace corvane {

void endRun(std::ostream &log, const std::string &text) {
  log << text << std::endl;
  endRunOn(std::cout, text);
}

void endRunOn(std::ostream &channel, const std::string &text) {
  channel << text << std::endl;
  throw corvane::fuzz::RunEnded{text};
}

void endRunOutOfMemory() noexcept {
  std::abort();
}

void endRunOutOfMemoryOnTerminate() noexcept {}

}  // namespace corvane
