#pragma once

#include <ostream>

namespace corvane::bench {

// Processor, cores, memory, system, compiler and date, one a line. Names no host and no path.
void describeMachine(std::ostream &out);

}  // namespace corvane::bench
