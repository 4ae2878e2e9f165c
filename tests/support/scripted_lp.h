#pragma once

// The solver operations of solver/callable_library.h for tests: a library that solves small LPs by
// itself, records every call, and fails or answers as a script says.
//
// Solving. Dense revised simplex in two phases (scripted_lp_simplex.h). The result depends on the
// LP alone, never on earlier solves, and is the same for every compiler and optimisation level.
// Rows G, L and E; lower bounds 0, upper bounds infinite, no ranges, sense 1: any other LP, and one
// with a number that is not finite, is answered with status 6.
//
// Return codes of its own, beside those of a script:
//   1001  the environment or the problem is null, closed or freed
//   1200  a count, an index or a row is out of range, or an array is missing
//   1217  values asked of a problem whose last solve was not optimal
//
// Script. Entries are separated by ';', blanks around an entry are ignored:
//   {operation}:{n}={answer}     for the n-th call of the operation, n from 1
//   {operation}:{n}+={answer}    for the n-th call and every later one
// The operation is open, close, createprob, copylp, addcols, primopt, hybbaropt, getstat,
// getobjval, getx, getpi, getdj or freeprob; calls are counted for each operation, over all
// problems. The answer is
//   {code}           a decimal integer: what the operation returns instead of doing its work; for
//                    open and createprob the status, with a null handle
//   null             for open and createprob: a null handle and the status 1001
//   [{v},{v},...]    for getobjval, getx, getpi and getdj: the values handed out, as far as they
//                    reach, with result 0; the numbers as strtod reads them
// The first entry that fits a call holds. Example: "primopt:3=1217;getstat:1=3;createprob:2=null".
// A script that cannot be read ends the process with a message, so no test runs without its script.
//
// Record. One line a call: the operation's full name, every argument with its name, "->" and the
// result. Environments and problems are env1, env2, ... and lp1, lp2, ... in the order of creation,
// or null, or unknown; other pointers null or set; arrays their contents; numbers in %.17g. Output
// values stand after the result.
//
// The environment variables CORVANE_SCRIPTED_LP_SCRIPT (a script) and CORVANE_SCRIPTED_LP_LOG (the
// file for the record, written anew) are read at the first operation of the process, unless
// reset() came before it, and by reset_from_environment().

#include <string>
#include <string_view>
#include <vector>

namespace scripted_lp {

// Forgets problems, counts, script and recorded calls, closes the record file, and keeps the
// following calls in memory for calls(). For tests in one process; call it in each SetUp.
void reset();

// Replaces the script. Counts of calls go on.
void set_script(std::string_view script);

// The recorded calls since reset(), oldest first.
const std::vector<std::string> &calls();

// The calls since reset() of one operation, by its short name as in a script.
std::vector<std::string> calls_of(std::string_view operation);

}  // namespace scripted_lp

// As reset(), but takes script and record file from the environment and keeps no calls in memory.
// C linkage, so that it can be found by name in the library file.
extern "C" void scripted_lp_reset_from_environment();
