#pragma once

namespace corvane::bench {

// The processor time that this process has used, in user and system mode, seconds. What other
// programs take of the machine meanwhile is not in it.
double cpuSeconds();

// The largest resident memory of this process so far, bytes.
double peakMemory();

}  // namespace corvane::bench
