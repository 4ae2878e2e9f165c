#pragma once

#include <iosfwd>
#include <string>

namespace corvane {

// The ends of a run that cannot go on, and the one place that ends the process. Both write the text
// and a line end, flush, and exit with status 1 without closing anything; the process-wide objects
// are destroyed.

// Speaks on standard output and in the log.
[[noreturn]] void endRun(std::ostream &log, const std::string &text);

// Speaks on one channel, for faults while there is no log yet.
[[noreturn]] void endRunOn(std::ostream &channel, const std::string &text);

// Ends the process with one line on standard error, without destroying anything or asking for
// memory: for when there is none left.
[[noreturn]] void endRunOutOfMemory() noexcept;

// Makes a std::bad_alloc that nobody can catch (while objects are constructed before main, or out
// of an operation that must not throw) end the run like any other.
void endRunOutOfMemoryOnTerminate() noexcept;

}  // namespace corvane
